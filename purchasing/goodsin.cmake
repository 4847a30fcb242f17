target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/frmGoodsIn.cpp
)
target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/GoodsIn.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GrnDocument.cpp
)
