target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Clock.cpp
    ${CMAKE_CURRENT_LIST_DIR}/DbEngine.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Dialect.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Globals.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Helpers.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MsgBox.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Rights.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Schema.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Startup.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Upgrades.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Application.cpp
    ${CMAKE_CURRENT_LIST_DIR}/QtBoxes.cpp
    ${CMAKE_CURRENT_LIST_DIR}/TextBoxRules.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmPBar.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmStartup.cpp
)

# The user name comes from the account API on Windows.
if(WIN32)
    target_link_libraries(quillstock_core PUBLIC advapi32)
endif()
