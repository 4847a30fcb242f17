qs_add_test(test_importcsv SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_importcsv.cpp)
qs_add_test(test_importcsv_panel GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_importcsv_panel.cpp)

# A second workstation for the two-process test.
add_executable(importcsv_child ${CMAKE_CURRENT_LIST_DIR}/importcsv_child.cpp)
target_link_libraries(importcsv_child PRIVATE quillstock_core)
qs_add_test(test_importcsv_twoproc SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_importcsv_twoproc.cpp)
add_dependencies(test_importcsv_twoproc importcsv_child)
target_compile_definitions(test_importcsv_twoproc PRIVATE
    QS_IMPORT_CHILD="$<TARGET_FILE:importcsv_child>")
