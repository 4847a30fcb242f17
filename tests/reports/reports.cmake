qs_add_test(test_reports SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_reports.cpp)
qs_add_test(test_report_windows GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_report_windows.cpp)
