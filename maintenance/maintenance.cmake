target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/frmDBUtils.cpp
)
