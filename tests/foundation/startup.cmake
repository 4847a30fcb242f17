qs_add_test(test_startupwindow GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_startupwindow.cpp)
qs_add_test(test_keyrules GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_keyrules.cpp)
