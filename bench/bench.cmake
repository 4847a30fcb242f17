# qstk3-bench: the system's procedures timed against their bare statements.
add_executable(qstk3-bench
    ${CMAKE_CURRENT_LIST_DIR}/main.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Harness.cpp
    ${CMAKE_CURRENT_LIST_DIR}/EngineBenchmarks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/InventoryBenchmarks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ContactBenchmarks.cpp
)
target_link_libraries(qstk3-bench PRIVATE quillstock_gendata quillstock_core)
set_target_properties(qstk3-bench PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
