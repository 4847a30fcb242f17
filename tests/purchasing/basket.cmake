qs_add_test(test_basket_window GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_basket_window.cpp)
