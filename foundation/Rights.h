// The seven rights and the guard in front of every changing action.
#pragma once

#include <QString>

enum class Right { Inventory, Sales, Purchasing, Contacts, Links, Utilities, UserAdmin };

// Sets all seven flags true, as every start-up does.
void GrantAllRights();
bool& RightFlag(Right r);
// The guard message of a right ("" for UserAdmin, which is never tested).
QString RightMessage(Right r);
// True when the right is held; otherwise shows `message` (or the right's own message) with the
// title "Access Restricted" and the information icon, and returns false.
bool CheckRight(Right r, const QString& message = QString());
