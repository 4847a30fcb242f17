// The firm's own name, address and logo path, which the printed documents show. The name and
// address are the one row of tblHome; the logo path is the setting "Image_1" that every
// workstation shares.
#pragma once

#include "foundation/Startup.h"

#include <QString>

struct CompanyDetails {
    HomeDetails home; // CoName, then Add1..Add6, Tel1, Fax1
    QString logoFile;
};

// The first tblHome row (blank when the table is empty) and the shared logo path, whose first
// value "0" reads as empty and whose two values are joined.
CompanyDetails LoadCompanyDetails();

// Writes the name and address over every tblHome row, or inserts the row when there is none, in
// one write transaction; then stores the logo path, its first 250 characters in the first value
// and the rest in the second. Engine errors reach the caller: a failing tblHome statement leaves
// the table as it was, and gPcName is the workstation's again however the call ends.
void SaveCompanyDetails(const CompanyDetails& details);

// Where a logo path is cut between the two values of its setting.
inline constexpr int kLogoPathSplit = 250;
