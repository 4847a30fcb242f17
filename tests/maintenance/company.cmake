add_executable(qs-company-saver ${CMAKE_CURRENT_LIST_DIR}/company_saver.cpp)
target_link_libraries(qs-company-saver PRIVATE quillstock_core)
qs_add_test(test_company SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_company.cpp)
add_dependencies(test_company qs-company-saver)
target_compile_definitions(test_company PRIVATE
    QS_COMPANY_SAVER="$<TARGET_FILE:qs-company-saver>")
qs_add_test(test_dbutils_home GUI SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_dbutils_home.cpp)
qs_add_test(test_statistics SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_statistics.cpp)
