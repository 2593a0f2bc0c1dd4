#include "image/ZKCMSTransform.h"
#include "support/DisplayServer.h"
#include "support/TestRegistry.h"

#include <QColor>
#include <QColorSpace>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

/// The profile that a color daemon sets for the screen, on a real window system.
class TestScreenProfile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void picturesAreShownByTheScreensOwnProfile_data();
    void picturesAreShownByTheScreensOwnProfile();
};

namespace {
constexpr int Limit = 120000; // ms
const QColor Paint(0xC8, 0x5A, 0x28);

struct Disconnect
{
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// As a color daemon does; it holds as long as the connection, or that of another program, does.
Connection SetScreenProfile(const QString& display, const QByteArray& icc)
{
    Connection connection(xcb_connect(display.toLocal8Bit().constData(), nullptr));
    if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
    constexpr char name[] = "_ICC_PROFILE";
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection.get(), xcb_intern_atom(connection.get(), 0, sizeof(name) - 1, name),
                              nullptr),
        &std::free);
    if (!atom) return nullptr;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    const xcb_void_cookie_t cookie =
        xcb_change_property_checked(connection.get(), XCB_PROP_MODE_REPLACE, root, atom->atom,
                                    XCB_ATOM_CARDINAL, 8, uint32_t(icc.size()), icc.constData());
    const std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error(
        xcb_request_check(connection.get(), cookie), &std::free);
    return error ? nullptr : std::move(connection);
}

/// Shows a picture of one color, and keeps what the window looks like.
QString Script(const QString& folder)
{
    return QStringLiteral(R"(
        documents.create(400, 300, { background: "%1" })
        idle()
        grab("%2/window.png")
    )")
        .arg(Paint.name(), folder);
}

/// The pixels that are as near to the color as rounding leaves them.
int CountOf(const QImage& image, const QColor& color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (qAbs(pixel.red() - color.red()) <= 1 && qAbs(pixel.green() - color.green()) <= 1 &&
                qAbs(pixel.blue() - color.blue()) <= 1) {
                ++count;
            }
        }
    }
    return count;
}
} // namespace

void TestScreenProfile::initTestCase()
{
    if (!DisplayServer::IsThere()) QSKIP("Xvfb is not installed.");
}

void TestScreenProfile::picturesAreShownByTheScreensOwnProfile_data()
{
    QTest::addColumn<QByteArray>("icc");
    QTest::addColumn<QColor>("shown");
    QColor converted = Paint;
    const QByteArray adobe = QColorSpace(QColorSpace::AdobeRgb).iccProfile();
    ZKCMSTransform(ZKCMSProfile(), ZKCMSProfile(adobe))(converted);
    QVERIFY(converted.rgb() != Paint.rgb());
    QTest::newRow("a wide screen") << adobe << converted;
    QTest::newRow("a screen that says nothing of use") << QByteArray("nothing") << Paint;
}

void TestScreenProfile::picturesAreShownByTheScreensOwnProfile()
{
    QFETCH(QByteArray, icc);
    QFETCH(QColor, shown);
    const QTemporaryDir folder;
    const DisplayServer server;
    const Connection daemon = SetScreenProfile(server.Environment().value(QStringLiteral("DISPLAY")), icc);
    QVERIFY(daemon);
    QFile script(folder.filePath("look.js"));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write(Script(folder.path()).toUtf8());
    script.close();

    QProcess program;
    program.setProcessEnvironment(server.Environment());
    program.start(ZK_PROGRAM,
                  {"--timeout", "90", "--user-data", folder.filePath("data"), "--script", script.fileName()});
    QVERIFY(program.waitForFinished(Limit));
    QVERIFY2(program.exitCode() == 0, program.readAllStandardError());

    const QImage window(folder.filePath("window.png"));
    QVERIFY(!window.isNull());
    // Nothing else in the window is as large as the picture.
    QVERIFY2(CountOf(window, shown) > 300 * 200, qPrintable(QString::number(CountOf(window, shown))));
}

ZK_REGISTER_TEST(tst_screen_profile, TestScreenProfile)
#include "tst_screen_profile.moc"
