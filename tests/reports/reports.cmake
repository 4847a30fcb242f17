qs_add_test(test_reports SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_reports.cpp)
