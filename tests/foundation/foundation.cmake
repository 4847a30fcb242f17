qs_add_test(test_helpers SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_helpers.cpp)
qs_add_test(test_engine SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_engine.cpp)
qs_add_test(test_upgrades SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_upgrades.cpp)
qs_add_test(test_startup GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_startup.cpp)
