qs_add_test(test_purchaseorder SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchaseorder.cpp)
qs_add_test(test_goodsin SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_goodsin.cpp)
qs_add_test(test_orderviewer SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_orderviewer.cpp)
qs_add_test(test_purchasing_documents
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchasing_documents.cpp)
qs_add_test(test_purchasing_windows GUI
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/test_purchasing_windows.cpp)
