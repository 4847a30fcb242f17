qs_add_test(test_itemdetail SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_itemdetail.cpp)
qs_add_test(test_itemdetail_panel GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_itemdetail_panel.cpp)
