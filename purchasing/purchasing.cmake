target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/PurchaseBasket.cpp
    ${CMAKE_CURRENT_LIST_DIR}/PurchaseOrder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/PurchaseOrderDocument.cpp
)
