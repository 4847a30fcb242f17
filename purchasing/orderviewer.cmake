target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ORViewer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmItemPOrders.cpp
)
target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/OrderViewer.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ItemPOrders.cpp
)
