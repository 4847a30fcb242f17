qs_add_test(test_basket SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_basket.cpp)
qs_add_test(test_purchaseorder SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchaseorder.cpp)
qs_add_test(test_purchaseorder_document
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchaseorder_document.cpp)
