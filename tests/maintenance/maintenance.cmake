qs_add_test(test_userrights SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_userrights.cpp)
qs_add_test(test_dbutils_users GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_dbutils_users.cpp)
