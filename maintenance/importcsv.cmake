target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/FlexCells.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ImportCsv.cpp
)
target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/FlexGrid.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ImportCsvPanel.cpp
)
