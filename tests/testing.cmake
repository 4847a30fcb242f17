# qs_add_test(NAME SOURCES... [GUI]): one QtTest suite, run offscreen with a fixed locale.
# Sources are given with ${CMAKE_CURRENT_LIST_DIR}/ in front.
add_library(quillstock_testsupport STATIC
    ${CMAKE_CURRENT_LIST_DIR}/support/TestSupport.cpp)
target_link_libraries(quillstock_testsupport PUBLIC quillstock_core Qt6::Test)

function(qs_add_test name)
    cmake_parse_arguments(T "GUI" "" "SOURCES" ${ARGN})
    add_executable(${name} ${T_SOURCES})
    target_link_libraries(${name} PRIVATE quillstock_testsupport Qt6::Test)
    if(T_GUI)
        target_link_libraries(${name} PRIVATE quillstock_gui)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QS_TEST_LOCALE=en_GB"
        TIMEOUT 300)
endfunction()
