target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ColumnState.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ColumnStateGrid.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GridEX.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GridModel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GridParts.cpp
)
