target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Printer.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/PrinterQt.cpp
)
