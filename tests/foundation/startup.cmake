qs_add_test(test_startupwindow GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_startupwindow.cpp)
