# qstk3-bench: the system's procedures timed against their bare statements. Every
# `*Benchmarks.cpp` here is one set that registers itself.
file(GLOB QS_BENCH_SETS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*Benchmarks.cpp)
add_executable(qstk3-bench
    ${CMAKE_CURRENT_LIST_DIR}/main.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Harness.cpp
    ${QS_BENCH_SETS}
)
target_link_libraries(qstk3-bench PRIVATE quillstock_gendata quillstock_gui)
set_target_properties(qstk3-bench PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
