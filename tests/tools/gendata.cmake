qs_add_test(test_gendata SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_gendata.cpp)
target_link_libraries(test_gendata PRIVATE quillstock_gendata)
