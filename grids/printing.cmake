target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ExportGridCsv.cpp
    ${CMAKE_CURRENT_LIST_DIR}/PrintGrid.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/GridEXSource.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmPrintDialog.cpp
)
