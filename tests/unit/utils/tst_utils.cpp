#include "support/TestRegistry.h"
#include "utils/Utils.h"

#include <QTest>

namespace {
/// The textbook form: one bit after the other, polynomial 0xEDB88320.
unsigned int Twin(const QByteArray& bytes)
{
    unsigned int crc = 0xFFFFFFFFu;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320u : 0);
        }
    }
    return ~crc;
}

unsigned int ChecksumOf(const QByteArray& bytes)
{
    const unsigned int start = Utils::CRC32(0, nullptr, 0);
    return Utils::CRC32(start, bytes.constData(), static_cast<unsigned int>(bytes.size()));
}
} // namespace

class TestUtils : public QObject
{
    Q_OBJECT

private slots:
    void theChecksumIsTheOneOfTheStandard();
    void theChecksumEqualsItsTwin();
    void theChecksumGoesOnPieceByPiece();
};

/// The value that the standard gives for these nine digits.
void TestUtils::theChecksumIsTheOneOfTheStandard()
{
    QCOMPARE(ChecksumOf("123456789"), 0xCBF43926u);
    QCOMPARE(ChecksumOf(QByteArray()), Utils::CRC32(0, nullptr, 0));
}

void TestUtils::theChecksumEqualsItsTwin()
{
    QByteArray bytes;
    for (int i = 0; i < 1000; ++i) {
        bytes.append(static_cast<char>(i * i * 7 + i));
        if (i % 97 == 0) QCOMPARE(ChecksumOf(bytes), Twin(bytes));
    }
}

void TestUtils::theChecksumGoesOnPieceByPiece()
{
    const QByteArray bytes("one row of pixels and the next");
    unsigned int crc = Utils::CRC32(0, nullptr, 0);
    crc = Utils::CRC32(crc, bytes.constData(), 10);
    crc = Utils::CRC32(crc, bytes.constData() + 10, 0);
    crc = Utils::CRC32(crc, bytes.constData() + 10, static_cast<unsigned int>(bytes.size()) - 10);
    QCOMPARE(crc, ChecksumOf(bytes));
}

ZK_REGISTER_TEST(tst_utils, TestUtils)
#include "tst_utils.moc"
