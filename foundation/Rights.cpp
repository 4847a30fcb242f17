#include "foundation/Rights.h"

#include "foundation/Globals.h"
#include "foundation/MsgBox.h"

void GrantAllRights() {
    gCanInventory = true;
    gCanSales = true;
    gCanPurchasing = true;
    gCanContacts = true;
    gCanLinks = true;
    gCanUtilities = true;
    gCanUserAdmin = true;
}

bool& RightFlag(Right r) {
    switch (r) {
    case Right::Inventory:
        return gCanInventory;
    case Right::Sales:
        return gCanSales;
    case Right::Purchasing:
        return gCanPurchasing;
    case Right::Contacts:
        return gCanContacts;
    case Right::Links:
        return gCanLinks;
    case Right::Utilities:
        return gCanUtilities;
    case Right::UserAdmin:
        break;
    }
    return gCanUserAdmin;
}

QString RightMessage(Right r) {
    switch (r) {
    case Right::Inventory:
        return QStringLiteral("You do not have permission to add or make changes to inventory");
    case Right::Sales:
        return QStringLiteral(
            "You do not have permission to add or make changes to customer orders");
    case Right::Purchasing:
        return QStringLiteral(
            "You do not have permission to add or make changes to purchase orders");
    case Right::Contacts:
        return QStringLiteral(
            "You do not have permission to add or make changes to contact/address details");
    case Right::Links:
        return QStringLiteral("You do not have permission to add or make changes to HyperLinks");
    case Right::Utilities:
        return QStringLiteral("You do not have permission to access system utilities");
    case Right::UserAdmin:
        break;
    }
    return QString();
}

bool CheckRight(Right r, const QString& message) {
    if (RightFlag(r))
        return true;
    MsgBox(message.isEmpty() ? RightMessage(r) : message, vbInformation,
           QStringLiteral("Access Restricted"));
    return false;
}
