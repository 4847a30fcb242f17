qs_add_test(test_orderviewer SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_orderviewer.cpp)
qs_add_test(test_orviewer_window GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_orviewer_window.cpp)
