qs_add_test(test_movements SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_movements.cpp)
