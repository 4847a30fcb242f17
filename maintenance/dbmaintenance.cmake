# Backup, compact, re-sync and restore: procedures in the core, the two tabs in the window layer.
target_sources(quillstock_core PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Maintenance.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Restore.cpp
)
target_sources(quillstock_gui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/BackupTab.cpp
    ${CMAKE_CURRENT_LIST_DIR}/FileLists.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MaintenancePanel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/RestorePanel.cpp
)
