qs_add_test(test_engine_statements SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_engine_statements.cpp)
