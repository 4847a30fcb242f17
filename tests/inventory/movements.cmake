qs_add_test(test_movements SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_movements.cpp)
qs_add_test(test_movements_gui GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_movements_gui.cpp)
