qs_add_test(test_invoicing SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_invoicing.cpp)
