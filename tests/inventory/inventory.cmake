qs_add_test(test_inventorylist SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_inventorylist.cpp)
qs_add_test(test_formmain GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_formmain.cpp)
