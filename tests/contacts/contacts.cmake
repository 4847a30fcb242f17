qs_add_test(test_contacts GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_contacts.cpp)
