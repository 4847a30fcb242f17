qs_add_test(test_listorder SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_listorder.cpp)
