// The key rules of the text boxes, typed as a keyboard types: into the widget that has the focus.
#include "foundation/TextBoxRules.h"
#include "grids/GridEX.h"
#include "inventory/frmItemDetail.h"
#include "tests/support/TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
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

QString textOf(QWidget* box) {
    if (auto* c = qobject_cast<QComboBox*>(box))
        return c->currentText();
    if (auto* e = qobject_cast<QLineEdit*>(box))
        return e->text();
    return qobject_cast<QPlainTextEdit*>(box)->toPlainText();
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

    // Each kind of box takes its rules, whether the keys arrive at an edit or at a combo box.
    void everyBoxTakesItsRules() {
        QWidget window;
        auto* lay = new QVBoxLayout(&window);
        const auto combo = [&] {
            auto* c = new QComboBox(&window);
            c->setEditable(true);
            lay->addWidget(c);
            return c;
        };
        const auto edit = [&] {
            auto* e = new QLineEdit(&window);
            lay->addWidget(e);
            return e;
        };
        QComboBox* code = combo();
        QComboBox* codeByEdit = combo();
        QComboBox* text = combo();
        QComboBox* qty = combo();
        QLineEdit* lineText = edit();
        auto* memo = new QPlainTextEdit(&window);
        lay->addWidget(memo);
        QLineEdit* lineQty = edit();
        QLineEdit* lineCode = edit();
        QLineEdit* after = edit();
        AttachAlphaNumericRules(code, true);
        AttachAlphaNumericRules(codeByEdit->lineEdit(), false); // the inner edit given
        AttachTextRules(text);
        AttachNumberRules(qty, QStringLiteral("0.0#"));
        AttachTextRules(lineText);
        AttachTextRules(memo);
        AttachNumberRules(lineQty, QStringLiteral("0.0#"));
        AttachAlphaNumericRules(lineCode, true);

        const struct {
            QWidget* box;
            QString keys;
            QString shown;
        } typed[] = {{codeByEdit, "ab-c", "abc"}, {text, "O'Brien's", "O`Brien`s"},
                     {qty, "1x2.3.4", "12.34"},   {lineText, "O'Brien's", "O`Brien`s"},
                     {memo, "it's", "it`s"},      {lineQty, "1x2.3.4-5", "12.345"},
                     {lineCode, "ab-1 c", "AB1C"}};
        memo->setTabChangesFocus(true);
        QVERIFY(focusOn(&window, code));
        QCOMPARE(QApplication::focusWidget(), code); // the combo box keeps the focus
        type(QStringLiteral("fix-2 a"));
        QCOMPARE(code->currentText(), QStringLiteral("FIX2A"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        QCOMPARE(code->currentText(), QStringLiteral("FIX2"));
        tabAway();
        for (const auto& t : typed) {
            QCOMPARE(QApplication::focusWidget(), t.box);
            type(t.keys);
            QCOMPARE(textOf(t.box), t.shown);
            tabAway();
        }
        QCOMPARE(QApplication::focusWidget(), after);
        QCOMPARE(qty->currentText(), QStringLiteral("12.34"));

        // Text put in without typing (pasted) is mended on leaving the box.
        text->setEditText(QStringLiteral("pasted 'quote'"));
        lineText->setText(QStringLiteral("a'b"));
        qty->setEditText(QStringLiteral("7.00"));
        lineQty->setText(QStringLiteral("7.50"));
        for (QWidget* box : {static_cast<QWidget*>(text), static_cast<QWidget*>(lineText),
                             static_cast<QWidget*>(qty), static_cast<QWidget*>(lineQty)}) {
            box->setFocus(Qt::OtherFocusReason);
            tabAway();
        }
        QCOMPARE(text->currentText(), QStringLiteral("pasted `quote`"));
        QCOMPARE(lineText->text(), QStringLiteral("a`b"));
        QCOMPARE(qty->currentText(), QStringLiteral("7"));
        QCOMPARE(lineQty->text(), QStringLiteral("7.5"));
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
