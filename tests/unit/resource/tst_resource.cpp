#include "resource/LXResource.h"
#include "resource/ResourceFolder.h"
#include "support/TestRegistry.h"

#include <QDir>
#include <QTest>

class TestResource : public QObject
{
    Q_OBJECT

private slots:
    void constantsAreTold();
    void unknownConstantIsInvalid();
    void resourcesAreFoundFromTheBuildTree();
};

void TestResource::constantsAreTold()
{
    QCOMPARE(LXResource::GetData(LXResource::ProductName).toString(), QString("Zenkari"));
    QCOMPARE(LXResource::GetData(LXResource::ProductVersion).toString(), QString(ZK_PRODUCT_VERSION));
    QCOMPARE(LXResource::GetData(LXResource::ApplicationName).toString(), QString("zenkari"));
}

void TestResource::unknownConstantIsInvalid()
{
    QVERIFY(!LXResource::GetData(static_cast<LXResource::ConstRole>(1000)).isValid());
}

void TestResource::resourcesAreFoundFromTheBuildTree()
{
    const QString path = ResourceFolder::Path();
    QVERIFY2(path.endsWith("/share/zenkari"), qPrintable(path));
    QVERIFY(QDir(path).exists("style.qss"));
    QVERIFY(QDir(path).exists("patterns"));
}

ZK_REGISTER_TEST(tst_resource, TestResource)
#include "tst_resource.moc"
