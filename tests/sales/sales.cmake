qs_add_test(test_custorder SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_custorder.cpp)
qs_add_test(test_custorder_window GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_custorder_window.cpp)
