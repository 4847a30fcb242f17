target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/StockMovements.cpp
    ${CMAKE_CURRENT_LIST_DIR}/OnOrder.cpp
)
target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/frmInvAdjustments.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ItemHistoryPanel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmStockQtyInfo.cpp
)
