qs_add_test(test_maintenance SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_maintenance.cpp)
qs_add_test(test_importcsv SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_importcsv.cpp)
qs_add_test(test_dbutils GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_dbutils.cpp)
