target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Reports.cpp
    ${CMAKE_CURRENT_LIST_DIR}/InventoryReports.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/frmReporterMenu.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmShowReport.cpp
)
