// The key rules of the text boxes, typed as a keyboard types: into the widget that has the focus.
#include "foundation/TextBoxRules.h"
#include "grids/GridEX.h"
#include "inventory/frmItemDetail.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

namespace {

// A window on screen with the keyboard on `box`.
bool focusOn(QWidget* window, QWidget* box) {
    window->show();
    QApplication::setActiveWindow(window);
    if (!QTest::qWaitForWindowActive(window))
        return false;
    box->setFocus(Qt::OtherFocusReason);
    QApplication::processEvents();
    return QApplication::focusWidget() != nullptr;
}

// Types into whatever has the focus.
void type(const QString& keys) {
    QTest::keyClicks(QApplication::focusWidget(), keys);
}

// Moves the keyboard to the next box, so that the one left sees its focus go.
void tabAway() {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QApplication::processEvents();
}

} // namespace

class TestKeyRules : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { UseTestLocale(); }

    void editableComboTakesTheRulesOfItsBox() {
        QWidget window;
        auto* lay = new QVBoxLayout(&window);
        auto* code = new QComboBox(&window);
        code->setEditable(true);
        auto* codeByEdit = new QComboBox(&window);
        codeByEdit->setEditable(true);
        auto* text = new QComboBox(&window);
        text->setEditable(true);
        auto* qty = new QComboBox(&window);
        qty->setEditable(true);
        auto* after = new QLineEdit(&window);
        for (QWidget* w : {static_cast<QWidget*>(code), static_cast<QWidget*>(codeByEdit),
                           static_cast<QWidget*>(text), static_cast<QWidget*>(qty),
                           static_cast<QWidget*>(after)})
            lay->addWidget(w);
        AttachAlphaNumericRules(code, true);
        AttachAlphaNumericRules(codeByEdit->lineEdit(), false); // the inner edit given
        AttachTextRules(text);
        AttachNumberRules(qty, QStringLiteral("0.0#"));

        QVERIFY(focusOn(&window, code));
        QCOMPARE(QApplication::focusWidget(), code); // the combo box keeps the focus
        type(QStringLiteral("fix-2 a"));
        QCOMPARE(code->currentText(), QStringLiteral("FIX2A"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        QCOMPARE(code->currentText(), QStringLiteral("FIX2"));

        tabAway();
        QCOMPARE(QApplication::focusWidget(), codeByEdit);
        type(QStringLiteral("ab-c"));
        QCOMPARE(codeByEdit->currentText(), QStringLiteral("abc"));

        tabAway();
        type(QStringLiteral("O'Brien's"));
        QCOMPARE(text->currentText(), QStringLiteral("O`Brien`s"));
        text->setEditText(QStringLiteral("pasted 'quote'")); // pasted: mended on leaving
        tabAway();
        QCOMPARE(text->currentText(), QStringLiteral("pasted `quote`"));

        type(QStringLiteral("1x2.3.4"));
        QCOMPARE(qty->currentText(), QStringLiteral("12.34"));
        tabAway();
        QCOMPARE(QApplication::focusWidget(), after);
        QCOMPARE(qty->currentText(), QStringLiteral("12.34"));
        qty->setEditText(QStringLiteral("7.00"));
        qty->setFocus(Qt::OtherFocusReason);
        tabAway();
        QCOMPARE(qty->currentText(), QStringLiteral("7"));
    }

    void categoryBoxOfTheItemDetail() {
        TestData data;
        QVERIFY(data.ok());
        frmItemDetail panel;
        panel.resize(900, 600);
        QVERIFY(focusOn(&panel, panel.txtItemCat));
        QCOMPARE(QApplication::focusWidget(), panel.txtItemCat);
        type(QStringLiteral("fix-2"));
        QCOMPARE(panel.txtItemCat->currentText(), QStringLiteral("FIX2"));
        type(QStringLiteral("'x"));
        QCOMPARE(panel.txtItemCat->currentText(), QStringLiteral("FIX2X"));
    }

    void gridTakesTheKeyboardOnItsRows() {
        QWidget window;
        auto* lay = new QVBoxLayout(&window);
        auto* before = new QLineEdit(&window);
        auto* grid = new GridEX(QStringLiteral("gdxFocus"), &window);
        grid->Columns().Add(QStringLiteral("A"), QStringLiteral("A"));
        lay->addWidget(before);
        lay->addWidget(grid);
        QVERIFY(focusOn(&window, before));
        tabAway();
        QCOMPARE(QApplication::focusWidget(), grid->TableView());
        before->setFocus(Qt::OtherFocusReason);
        grid->setFocus(Qt::OtherFocusReason);
        QCOMPARE(QApplication::focusWidget(), grid->TableView());
        QVERIFY(grid->hasFocus());
    }
};

QTEST_MAIN(TestKeyRules)
#include "test_keyrules.moc"
