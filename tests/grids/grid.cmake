qs_add_test(test_grid GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_grid.cpp)
qs_add_test(test_columnstate GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_columnstate.cpp)
