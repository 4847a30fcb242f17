qs_add_test(test_goodsin SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_goodsin.cpp)
qs_add_test(test_grn_document SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_grn_document.cpp)
qs_add_test(test_goodsin_window GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_goodsin_window.cpp)
