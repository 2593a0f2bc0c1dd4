#include "app/EditorScriptHost.h"
#include "scripting/ScriptSurface.h"
#include "support/EditorScriptFixture.h"
#include "support/TestRegistry.h"

#include <QJSEngine>
#include <QMap>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QSet>

/// `docs/scripting.md` is the truth: it names everything that there is and nothing else, and its examples
/// run.
class TestScriptReference : public QObject
{
    Q_OBJECT

private slots:
    void everyObjectHasItsChapter();
    void everyPropertyAndCallIsNamedInItsChapter_data();
    void everyPropertyAndCallIsNamedInItsChapter();
    void everyExampleRuns_data();
    void everyExampleRuns();
};

namespace {
QStringList ReferenceLines()
{
    QFile file(ZK_SCRIPTING_REFERENCE);
    if (!file.open(QIODevice::ReadOnly)) qFatal("The reference can't be read.");
    return QString::fromUtf8(file.readAll()).split('\n');
}

/// The names that tables of each chapter explain, by the chapter's title.
QMap<QString, QSet<QString>> ExplainedNames()
{
    const QRegularExpression title("^##+ (.*)$");
    const QRegularExpression row("^\\| (`[^|]*) \\|");
    const QRegularExpression name("`(\\w+)(\\([^`]*\\))?`");
    QMap<QString, QSet<QString>> names;
    QString chapter;
    for (const QString& line : ReferenceLines()) {
        if (const QRegularExpressionMatch match = title.match(line); match.hasMatch()) {
            chapter = match.captured(1).remove('`');
            names[chapter];
        }
        const QString cell = row.match(line).captured(1);
        for (auto match = name.globalMatch(cell); match.hasNext();)
            names[chapter].insert(match.next().captured(1));
    }
    return names;
}

/// What scripts can use of an object, beyond what every QObject has.
QSet<QString> NamesOf(const QMetaObject* type)
{
    QSet<QString> names;
    for (int i = QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i)
        names.insert(type->property(i).name());
    for (int i = QObject::staticMetaObject.methodCount(); i < type->methodCount(); ++i)
        names.insert(type->method(i).name());
    return names;
}

/// One fenced example and the line that it begins in.
struct Example
{
    int line = 0;
    QString text;
};

QList<Example> Examples()
{
    QList<Example> examples;
    bool isInside = false;
    int number = 0;
    for (const QString& line : ReferenceLines()) {
        ++number;
        if (line == "```js") {
            isInside = true;
            examples.append(Example{number + 1, QString()});
        } else if (line.startsWith("```")) {
            isInside = false;
        } else if (isInside) {
            examples.last().text += line + '\n';
        }
    }
    return examples;
}
} // namespace

void TestScriptReference::everyObjectHasItsChapter()
{
    const auto names = ExplainedNames();
    for (const ScriptSurface::Entry& entry : ScriptSurface::Entries())
        QVERIFY2(names.contains(entry.name), entry.name);
    QVERIFY(names.size() > ScriptSurface::Entries().size());
}

void TestScriptReference::everyPropertyAndCallIsNamedInItsChapter_data()
{
    QTest::addColumn<QString>("chapter");
    QTest::addColumn<QString>("expression");
    for (const ScriptSurface::Entry& entry : ScriptSurface::Entries())
        QTest::newRow(entry.name) << entry.name << entry.name;
    // What these objects give.
    QTest::newRow("document") << "A document"
                              << "documents.active";
    QTest::newRow("layer") << "A layer"
                           << "layers.at(0)";
    QTest::newRow("pixels") << "Pixels that can be read"
                            << "pixels.merged";
    QTest::newRow("widget") << "A widget"
                            << "widgets.find('mainWindow')";
    QTest::newRow("menu entry") << "A menu entry"
                                << "menus.find('File')";
    QTest::newRow("random") << "Random numbers"
                            << "random(1)";
}

void TestScriptReference::everyPropertyAndCallIsNamedInItsChapter()
{
    QFETCH(QString, chapter);
    QFETCH(QString, expression);
    EditorScriptFixture editor(4, 3);
    EditorScriptHost host(editor.GetEditor());
    ScriptOptions options;
    options.allowFaults = true;
    ScriptEngine engine(host, options);
    const QObject* object = engine.GetContext().GetEngine().evaluate(expression).toQObject();
    QVERIFY(object);

    const QSet<QString> there = NamesOf(object->metaObject());
    const QSet<QString> explained = ExplainedNames()[chapter];
    const QStringList missing = (there - explained).values();
    const QStringList invented = (explained - there).values();
    QVERIFY2(missing.isEmpty(), qPrintable("not explained: " + missing.join(", ")));
    QVERIFY2(invented.isEmpty(), qPrintable("not there: " + invented.join(", ")));
}

void TestScriptReference::everyExampleRuns_data()
{
    QTest::addColumn<QString>("text");
    const QList<Example> examples = Examples();
    QVERIFY(examples.size() > ScriptSurface::Entries().size());
    for (const Example& example : examples)
        QTest::addRow("line %d", example.line) << example.text;
}

void TestScriptReference::everyExampleRuns()
{
    QFETCH(QString, text);
    EditorScriptFixture editor;
    editor.Check(text, true);
}

#include "tst_scriptreference.moc"
ZK_REGISTER_TEST(tst_scriptreference, TestScriptReference)
