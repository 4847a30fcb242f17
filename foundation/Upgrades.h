// Brings older data files to the current structure at every start.
#pragma once

// The five steps, in their fixed order. Returns false when the "32A" step failed: the user has
// been told and the program must end.
bool RunUpgrades();

void UpgradeUnitsOfMeasure();  // step 1
void UpgradeTo31A();           // step 2
bool UpgradeTo32A();           // step 3 (runs 3a after a successful upgrade)
void UpgradeInvoicedColumn();  // step 3a
void UpgradeParametersTable(); // step 4
void UpgradeSettingsWidth();   // step 5
