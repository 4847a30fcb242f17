qs_add_test(test_invoicing SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_invoicing.cpp)
qs_add_test(test_invoicing_workstations SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_invoicing_workstations.cpp)
