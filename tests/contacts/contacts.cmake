qs_add_test(test_contacts SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_contacts.cpp)
qs_add_test(test_contact_windows GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_contact_windows.cpp)
