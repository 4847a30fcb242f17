qs_add_test(test_maintenance SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_maintenance.cpp)
qs_add_test(test_restore SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_restore.cpp)
qs_add_test(test_maintenance_tabs GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_maintenance_tabs.cpp)
