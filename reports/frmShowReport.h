// The report window shared by every report: the title, the date pickers of a dated report, the
// grid gdxUBView fed from the rows the report returns, up to five summary lines, and the tool bar
// that prints or exports the grid. The report shown is gReportType, read as the window loads.
#pragma once

#include "reports/Reports.h"

#include <QDate>
#include <QDialog>

class GridEX;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolBar;
class QToolButton;

class frmShowReport : public QDialog {
    Q_OBJECT

public:
    explicit frmShowReport(QWidget* parent = nullptr);

    // The dates the pickers hold (invalid while a picker has no choice).
    QDate StartDate() const;
    QDate EndDate() const;
    // True while a report is being read.
    bool Running() const { return mRunning; }
    // The rows of the grid's array, as the report returned them.
    const QList<QStringList>& Rows() const { return mRows; }

    void Command1_Click();
    void Command11_Click();
    // The tool bar: 3 opens the print panel, 5 exports the grid; any other says so.
    void buttons_ButtonClick(int index);
    // What the print panel's Print runs (0 Portrait, 1 Landscape).
    void PrintReport(int orientationChoice);
    void ExportReport();

    QGroupBox* Frame1;
    QGroupBox* Frame2;
    QComboBox* cboStartDay;
    QComboBox* cboStartMonth;
    QComboBox* cboStartYear;
    QComboBox* cboEndDay;
    QComboBox* cboEndMonth;
    QComboBox* cboEndYear;
    QPushButton* Command1;
    QPushButton* Command2;
    QPushButton* Command11;
    QLabel* Label3;
    QLabel* Label2;
    QLineEdit* Text1;
    QLineEdit* Text2;
    QLineEdit* Text3;
    QLineEdit* Text4;
    QLineEdit* Text5;
    QFrame* frmWait;
    QToolBar* buttons;
    QToolButton* buttons_3;
    QToolButton* buttons_5;
    GridEX* gdxUBView;

public slots:
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Load();
    void FillDatePickers();
    // Checks the date of one group of pickers after a change, and writes the settled day back.
    void CheckPickedDate(QComboBox* day, QComboBox* month, QComboBox* year);
    QDate PickedDate(const QComboBox* day, const QComboBox* month, const QComboBox* year) const;
    void ShowReport();
    void ShowResult(const ReportResult& result);
    // Runs an export or a listing of the grid with report 12's Category column shown.
    void WithGroupColumnShown(const std::function<void()>& action);

    ReportLayout mLayout;
    QList<QStringList> mRows;
    QString mGroupKey;
    bool mUnload = false;
    bool mLoadRunPending = false;
    bool mRunning = false;
    bool mRunAgain = false;
    bool mCloseWhenDone = false;
    bool mGroupsCollapsed = false;
};
