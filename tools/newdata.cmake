add_executable(qstk3-newdata ${CMAKE_CURRENT_LIST_DIR}/newdata.cpp)
target_link_libraries(qstk3-newdata PRIVATE quillstock_core)
