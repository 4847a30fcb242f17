qs_add_test(test_sales_documents SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_sales_documents.cpp)
