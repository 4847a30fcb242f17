// The stored on-order quantity of one item.
#pragma once

#include <QtGlobal>

class Database;

// Recounts tblStockItems.OnOrderQty of one item as the sum of POQty less PORecieved over its
// purchase order rows where the two differ; a row received beyond its order quantity lowers the
// sum. Called after every change of purchase order rows. Uses the caller's open database when
// given one (so that it sees the rows of the caller's transaction), otherwise opens its own.
// Returns the total written.
double RefreshOnOrderQty(qint32 itemId, Database* db = nullptr);
