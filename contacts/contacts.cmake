target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Contacts.cpp
)

target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/frmEditContact.cpp
    ${CMAKE_CURRENT_LIST_DIR}/frmContacts.cpp
)
