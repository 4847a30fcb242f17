// The inventory list as its user meets it: in the main window (offscreen), from the click on a
// bar item to the grid showing its rows.
#include "bench/Benchmarks.h"

#include "foundation/Rights.h"
#include "grids/GridEX.h"
#include "inventory/FormMain.h"
#include "inventory/InventoryList.h"

#include <QApplication>
#include <QTableView>
#include <QToolBox>
#include <QToolButton>
#include <memory>

namespace {
// The main window, made by the first run and kept for the others.
class MainWindowHolder {
public:
    FormMain& Window() {
        if (!mWindow) {
            GrantAllRights();
            mWindow = std::make_unique<FormMain>();
            mWindow->Form_Load();
            mWindow->resize(1280, 800);
            mWindow->show();
            QApplication::processEvents();
        }
        return *mWindow;
    }

private:
    std::unique_ptr<FormMain> mWindow;
};

void addBarItem(BenchRegistry& registry, const QString& name,
                const std::shared_ptr<MainWindowHolder>& holder, const QString& group,
                const QString& key, quint8 mode) {
    const UBViewSpec view = UBViewFor(mode, 0, QString(), QString());
    registry.addWindow(name,
                       [holder, group, key] {
                           FormMain& w = holder->Window();
                           for (int i = 0; i < w.ButtonBar1->count(); ++i)
                               if (w.ButtonBar1->itemText(i) == group)
                                   w.ButtonBar1->setCurrentIndex(i);
                           w.ButtonBar1->findChild<QToolButton*>(key)->click();
                           // The grid is filled when the rows on screen are painted.
                           QApplication::processEvents();
                           w.gdxUBView->TableView()->viewport()->repaint();
                           Consume(w.gdxUBView->ItemCount());
                       },
                       {UBItemFileOrderStatement(UBFilters{}, view.extraWhere)});
}
} // namespace

static void AddInventoryWindowBenchmarks(BenchRegistry& registry, const BenchContext&) {
    auto holder = std::make_shared<MainWindowHolder>();
    addBarItem(registry, QStringLiteral("inventory.window.all"), holder,
               QStringLiteral("Inventory"), QStringLiteral("UB_All"), UBMode::AllItems);
    addBarItem(registry, QStringLiteral("inventory.window.belowminimum"), holder,
               QStringLiteral("Shortages"), QStringLiteral("AllBelow"), UBMode::BelowMinimum);
}

static const BenchSet inventoryWindowSet("inventorywindow", AddInventoryWindowBenchmarks);
