// The files of the inventory tests. A small stock file for the list: items with no supplier, with
// three suppliers, with long and multi-line comments, with negative quantities, allocations, and
// two items under one part number.
#pragma once

#include "foundation/DbEngine.h"
#include "foundation/Globals.h"

#include <QStringList>

inline void FillInventoryFixture() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    const QStringList sql = {
        "INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) VALUES (1, 'Acme Components', "
        "'ACME'), (2, 'Bolt Brothers', 'BOLT'), (3, 'Zed Supplies', 'ZED')",
        // ItemID, MasterPNo, ItemName, ItemDescription, Category, Assy, Location, Qty, Trigger,
        // SellAt, AllowDiscount, AllocQty, OnOrderQty, BuyNow, UOM1, UOM2, UOM3
        "INSERT INTO tblStockItems VALUES "
        "(1,'A100','1k','Resistor','RES',0,'BIN1',10,5,0.1,0,0,0,0,'','',''),"
        "(2,'B200','10uF','Capacitor','CAP',0,'BIN2',4,2,3,0,0,6,1,'','',''),"
        "(3,'C300','','Connector','CON',0,'BIN3',2.5,1,1.5,0,0,0,0,'','',''),"
        "(4,'D400','','Diode','DIO',0,'BIN4',-2,0,0.2,0,0,0,0,'','',''),"
        "(5,'E500','','Enclosure','ENC',0,'BIN5',3,0,12,0,0,0,0,'','',''),"
        "(6,'F600','','Fuse','FUS',0,'BIN6',1,4,0.5,0,0,0,0,'','',''),"
        "(7,'G700','first','Gasket','GAS',0,'BIN7',1,0,1,0,0,0,0,'','',''),"
        "(8,'G700','second','Gasket','GAS',0,'BIN7',1,0,1,0,0,0,0,'','',''),"
        "(9,'H800','','Main board','AS',-1,'SHELF',1,0,90,0,0,0,0,'','',''),"
        "(10,'H900','','Sub board','ASM',-1,'SHELF',1,0,40,0,0,0,0,'','',''),"
        "(11,'J100','','Jack','JCK',0,'BIN8',5,4,1,0,3,0,0,'','',''),"
        "(12,'J200','','Jumper','JCK',0,'BIN8',5,4,1,0,3,10,0,'','',''),"
        "(13,'J300','','Jig','JCK',0,'BIN8',10,4,1,0,1,0,0,'','',''),"
        "(14,'K100','','Knob','KNB',0,'BIN9',7,0,2,0,0,0,0,'','',''),"
        "(15,'L100','','Lamp','LMP',0,'BIN9',7,0,2,0,0,0,0,'','',''),"
        "(16,'X%1','','Percent part','MSC',0,'',1,0,1,0,0,0,0,'','',''),"
        "(17,'X_1','','Underscore part','MSC',0,'',1,0,1,0,0,0,0,'','',''),"
        "(18,'XA1','','Plain part','MSC',0,'',1,0,1,0,0,0,0,'','',''),"
        "(19,'XB1','','100% cotton','MSC',0,'',1,0,1,0,0,0,0,'','','')",
        // ItemID, SupplierID, SupplierPNo, MinOrQty, PriceEach, PrimeSupplier
        "INSERT INTO tblItemSupplier VALUES (2, 1, 'AC-200', 10, 1.5, 1)",
        "INSERT INTO tblItemSupplier VALUES (2, 2, 'BB-200', 5, 1.25, 0)",
        "INSERT INTO tblItemSupplier VALUES (2, 3, 'ZS-200', 1, 2, 0)",
        "INSERT INTO tblItemSupplier VALUES (14, 2, 'BB-K1', 2.5, 2.123456, 1)",
        "INSERT INTO tblItemSupplier VALUES (15, 0, '', 0, 0, 1)",
        "INSERT INTO tblItemComments VALUES (3, 'This first line is definitely longer than "
        "twenty-five characters\r\nand a second line follows')",
        "INSERT INTO tblItemComments VALUES (5, '  Short note\nline two')",
    };
    for (const QString& s : sql)
        db.Execute(s);
}

// The item detail's file: three suppliers (Zeta with a full address), item 7 with two of them
// (Alpha the prime) and a comment and a history row, and item 8 beside it with a supplier and a
// comment of its own that no action on item 7 may touch.
inline void FillItemFixture() {
    Database db = DBEngine::OpenDatabase(gDbPath);
    const QStringList sql = {
        "INSERT INTO tblSupAddresses (AddID, CoName, Add1, Add2, Add3, Add4, PCode, Contact1, "
        "Tel1, Fax1, EMail, ShortNm) VALUES (1, 'Zeta Parts', '1 High St', 'Unit 2', 'Leeds', "
        "'Yorks', 'LS1 1AA', 'Ann Bell', '0113 111', '0113 222', 'ann@zeta.test', 'ZET')",
        "INSERT INTO tblSupAddresses (AddID, CoName, ShortNm) VALUES (2, 'Alpha Supply', 'ALP'), "
        "(3, 'Mid Metals', 'MID')",
        "INSERT INTO tblStockItems (ItemID, MasterPNo, ItemName, ItemDescription, Category, Assy, "
        "Location, Qty, Trigger, SellAt, AllowDiscount, AllocQty, OnOrderQty, BuyNow) VALUES "
        "(7, 'P-7', '10k', 'Resistor pack', 'RES', -1, 'BIN 4', 12.5, 3, 0.125, 1, 0, 2, 0)",
        "INSERT INTO tblItemSupplier VALUES (7, 1, 'Z-77', 100, 0.05, 0)",
        "INSERT INTO tblItemSupplier VALUES (7, 2, 'A-77', 50, 0.0425, 1)",
        "INSERT INTO tblItemComments VALUES (7, 'old note')",
        "INSERT INTO tblItemHistory (StockID, HistDate, HistType, HistQty) VALUES "
        "(7, '2026-01-02', 'RX', 5)",
        "INSERT INTO tblStockItems (ItemID, MasterPNo, Category, Qty) VALUES (8, 'P-8', 'CAP', 1)",
        "INSERT INTO tblItemSupplier VALUES (8, 1, 'Z-88', 1, 1, 1)",
        "INSERT INTO tblItemComments VALUES (8, 'keep me')",
    };
    for (const QString& s : sql)
        db.Execute(s);
}
