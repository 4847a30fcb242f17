// The tab "Import (csv)" of the utilities window: Browse reads a comma-separated file into the
// preview grid fg1, the boxes say which grid column feeds which item field, and Import creates
// or updates the stock items row by row, writing each row's status into the grid's first column.
#pragma once

#include <QFrame>
#include <QList>

class FlexGrid;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
struct ImportColumnChoice;

class ImportCsvPanel : public QFrame {
    Q_OBJECT
public:
    explicit ImportCsvPanel(QWidget* parent = nullptr);

    void cmdBrowse_Click();
    void Command6_Click();
    void Command8_Click();
    void Label17_Click();
    void Label18_Click();

    QPushButton* cmdBrowse;
    QLineEdit* txtSourceName;
    FlexGrid* fg1;
    QLabel* Label15;
    QGroupBox* Frame5;
    QComboBox* Combo1;  // Part No.
    QComboBox* Combo2;  // Description
    QComboBox* Combo3;  // Quantity
    QComboBox* Combo4;  // Location
    QComboBox* Combo9;  // Buy Price
    QComboBox* Combo10; // Category
    QComboBox* Combo11; // Sell Price
    QComboBox* Combo12; // Detail
    QCheckBox* Check1;
    QCheckBox* Check2;
    QLabel* Label17;
    QLabel* Label18;
    QProgressBar* pb2;
    QPushButton* Command6; // Import
    QPushButton* Command8; // Close

signals:
    // Close was pressed: the window goes back to its first tab.
    void Closed();

private:
    void fillCombos();
    void setRunning(bool running);
    static ImportColumnChoice choiceOf(const QComboBox* box);
};
