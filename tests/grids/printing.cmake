qs_add_test(test_printgrid SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_printgrid.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MemoryGrid.h)
qs_add_test(test_exportcsv SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_exportcsv.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MemoryGrid.h)
qs_add_test(test_printpanel GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_printpanel.cpp)
