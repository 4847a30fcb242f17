target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CustOrder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/CustOrderSave.cpp
    ${CMAKE_CURRENT_LIST_DIR}/SalesDefaults.cpp
    ${CMAKE_CURRENT_LIST_DIR}/SalesLists.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CustOrderListPanel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/OrderGrid.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmBParts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmCustOrder.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmEditDelCharges.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmPrinter.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmSalesTax.cpp
)
