target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ItemDetail.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ItemSuppliers.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/frmItemDetail.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmNewItem.cpp
)
