// The figures of the statistics tab of the utilities window.
#pragma once

#include <QString>

// The size of a file in megabytes (its length / 1024 / 1024) through the mask "0.00" and
// " MBytes", so 1 MiB reads "1.00 MBytes"; "<1 MBytes" when the length cannot be read.
QString DatabaseSizeText(const QString& path);

// The rows of the History table of the business file, walked to the last one; 0 when the file or
// the table cannot be read. tblItemHistory is not counted.
qint64 CountHistoryRecords();

// The purge command's answer: the database is never large enough for anything to be deleted.
QString PurgeHistoryMessage();
