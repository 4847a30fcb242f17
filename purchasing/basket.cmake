target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/PartsPanel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/PrintFrame.cpp
    ${CMAKE_CURRENT_LIST_DIR}/basket.cpp
)
