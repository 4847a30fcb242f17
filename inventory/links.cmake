target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Links.cpp
    ${CMAKE_CURRENT_LIST_DIR}/UsedIn.cpp
)
target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/LinksPanel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmUsedIn.cpp
)
