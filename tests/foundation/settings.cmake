qs_add_test(test_settings SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_settings.cpp)
