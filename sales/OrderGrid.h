// The rows of the customer order window: the caption grid fgHeader, the order grid fgSOrder that
// grows with its rows inside this frame, the one edit box fgedit that moves over the yellow cells,
// and the scroll bar vs1 that moves the grid. Shows the sheet's rows and writes edits back into
// the sheet.
#pragma once

#include <QFrame>

struct CustOrderSheet;
class QLineEdit;
class QScrollBar;
class QTableWidget;

class OrderGrid : public QFrame {
    Q_OBJECT
public:
    OrderGrid(CustOrderSheet& sheet, QWidget* parent = nullptr);

    // Lays out columns, rows, cell texts and yellow cells as the sheet has them, and sizes the
    // grid and vs1 to the rows.
    void ShowRows();
    // A click on a cell of fgSOrder (row and column from 0).
    void fgSOrder_Click(int row, int column);
    // Lays fgedit over the current cell of fgSOrder when its column may be edited.
    void PlaceCellEditor();
    void vs1_Change(int value);

    QTableWidget* fgHeader = nullptr;
    QTableWidget* fgSOrder = nullptr;
    QLineEdit* fgedit = nullptr;
    QScrollBar* vs1 = nullptr;

    // Twips of the frame: the caption row's height and a row's height.
    static constexpr int kHeaderTwips = 260;
    static constexpr int kRowTwips = 245;
    // The part of the grid that shows: fgedit moves up and down only between these tops.
    static constexpr int kEditTopMinTwips = 360;
    static constexpr int kEditTopMaxTwips = 5280;
    static constexpr int kFrameTwips = 5560;

signals:
    // fgedit wrote into the sheet: the totals under the grid have changed.
    void SheetEdited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int Px(int twips) const;
    int Twips(int px) const;
    void fgedit_Change(const QString& text);
    void fgedit_KeyDown(int key);
    void SelectEditText();
    void PlaceGrid();

    CustOrderSheet& mSheet;
    bool mShowing = false;
};
