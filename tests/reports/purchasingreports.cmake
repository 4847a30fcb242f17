qs_add_test(test_purchasing_reports
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchasing_reports.cpp)
qs_add_test(test_purchasing_report_window GUI
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchasing_report_window.cpp)
