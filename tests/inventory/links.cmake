qs_add_test(test_links SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_links.cpp)
