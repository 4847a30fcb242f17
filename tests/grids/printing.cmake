qs_add_test(test_printexport SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_printexport.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MemoryGrid.h)
