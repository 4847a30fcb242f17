target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/InventoryList.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/FormMain.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmBubbleMenu1.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmCommentInfo.cpp
)
