qs_add_test(test_printer SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_printer.cpp)
qs_add_test(test_printerqt GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_printerqt.cpp)
