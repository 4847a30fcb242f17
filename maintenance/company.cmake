target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CompanyDetails.cpp
    ${CMAKE_CURRENT_LIST_DIR}/DatabaseStatistics.cpp
)
target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CompanyDetailsPanel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/StatisticsPanel.cpp
)
