target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/SalesDocuments.cpp
)
