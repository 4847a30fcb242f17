# The data generator: a library for the tool, the benchmarks and the tests.
add_library(quillstock_gendata STATIC
    ${CMAKE_CURRENT_LIST_DIR}/GenData.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GenDataWrite.cpp)
target_link_libraries(quillstock_gendata PUBLIC quillstock_core)

add_executable(qstk3-gendata ${CMAKE_CURRENT_LIST_DIR}/gendata.cpp)
target_link_libraries(qstk3-gendata PRIVATE quillstock_gendata)
