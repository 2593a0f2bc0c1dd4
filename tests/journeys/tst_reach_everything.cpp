#include "app/MainWindow.h"
#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"
#include "support/EditorFixture.h"
#include "support/TestRegistry.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSet>
#include <QTabBar>
#include <QTest>

/// The main window without a mouse and without eyes.
class TestReachEverything : public QObject
{
    Q_OBJECT

private slots:

    void everyControlHasAName_data() { WindowStates(); }

    void everyControlHasAName();

    void tabReachesEveryControl_data() { WindowStates(); }

    void tabReachesEveryControl();

private:
    static void WindowStates();
};

namespace {
QString Describe(const QWidget* widget)
{
    return QStringLiteral("%1 \"%2\"").arg(widget->metaObject()->className(), widget->objectName());
}

/// What a person may want to use: no bare frames and labels, no parts inside of a control.
bool IsControl(const QWidget* widget)
{
    if (!widget->isVisible() || !widget->isEnabled()) return false;
    if (qobject_cast<const QScrollBar*>(widget)) return false;
    // The cross of a tab is for the mouse alone; Ctrl+W does the same.
    if (qobject_cast<const QTabBar*>(widget->parentWidget())) return false;
    const QWidget* parent = widget->parentWidget();
    if (qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent)) return false;
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
           qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSlider*>(widget) ||
           qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractItemView*>(widget) ||
           qobject_cast<const ZKDocumentView*>(widget);
}

QList<QWidget*> Controls(const MainWindow* window)
{
    QList<QWidget*> controls;
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (IsControl(widget)) controls.append(widget);
    }
    return controls;
}

void BringInto(EditorFixture& editor, bool hasTool)
{
    if (hasTool) editor.Tool("Fillcan");
}
} // namespace

void TestReachEverything::WindowStates()
{
    QTest::addColumn<bool>("hasDocument");
    QTest::addColumn<bool>("hasTool");
    QTest::newRow("empty") << false << false;
    QTest::newRow("a document") << true << false;
    QTest::newRow("a document and the fill can") << true << true;
}

void TestReachEverything::everyControlHasAName()
{
    QFETCH(bool, hasDocument);
    QFETCH(bool, hasTool);
    const auto editor =
        hasDocument ? std::make_unique<EditorFixture>(40, 30) : std::make_unique<EditorFixture>();
    BringInto(*editor, hasTool);

    const QList<QWidget*> controls = Controls(editor->Window());
    QVERIFY(!controls.isEmpty());
    for (QWidget* control : controls) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control);
        QVERIFY2(accessible, qPrintable(Describe(control)));
        QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(),
                 qPrintable(Describe(control) + " has no name"));
    }
}

void TestReachEverything::tabReachesEveryControl()
{
    QFETCH(bool, hasDocument);
    QFETCH(bool, hasTool);
    const auto editor =
        hasDocument ? std::make_unique<EditorFixture>(40, 30) : std::make_unique<EditorFixture>();
    BringInto(*editor, hasTool);

    QSet<QWidget*> missing;
    for (QWidget* control : Controls(editor->Window()))
        missing.insert(control);
    const int limit = missing.size() * 3 + 20;
    for (int step = 0; step < limit && !missing.isEmpty(); ++step) {
        editor->GetInput().Key(Qt::Key_Tab);
        missing.remove(QApplication::focusWidget());
    }

    QStringList names;
    for (const QWidget* control : missing)
        names.append(Describe(control));
    QVERIFY2(missing.isEmpty(), qPrintable("never focused: " + names.join(", ")));
}

ZK_REGISTER_TEST(tst_reach_everything, TestReachEverything)
#include "tst_reach_everything.moc"
