// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/argumentcipher.h"
#include "support/casename.h"

#include <QtTest>

class TestArgumentCipher : public QObject
{
    Q_OBJECT

private slots:
    // Appendix C of FIPS 197.
    void blocks()
    {
        const auto check = [&](const char *caseName, const QByteArray &key,
                               const QByteArray &cipher) {
            const CaseName inCase(caseName);
            const QByteArray plain = QByteArray::fromHex("00112233445566778899aabbccddeeff");
            QCOMPARE(encipherBlock(plain, QByteArray::fromHex(key)).toHex(), cipher);
        };
        check("AES-128", QByteArray("000102030405060708090a0b0c0d0e0f"),
              QByteArray("69c4e0d86a7b0430d8cdb78070b4c55a"));
        check("AES-192", QByteArray("000102030405060708090a0b0c0d0e0f1011121314151617"),
              QByteArray("dda97ca4864cdfe06eaf70a0ec0d7191"));
        check("AES-256",
              QByteArray("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f"),
              QByteArray("8ea2b7ca516745bfeafc49904b496089"));
    }

    void arguments()
    {
        const auto check = [&](const char *caseName, const QByteArray &plain, int bytes) {
            const CaseName inCase(caseName);
            const QByteArray argument = encipherArguments(plain, 0x04030201);
            const QByteArray decoded = QByteArray::fromBase64(argument);
            QCOMPARE(decoded.size(), bytes);
            QCOMPARE(decoded.left(5), QByteArray("\x04\x01\x02\x03\x04"));
            QVERIFY(plain.isEmpty() || !decoded.contains(plain.left(8)));
            QCOMPARE(decipherArguments(argument).value_or("nothing"), plain);
        };
        check("empty", QByteArray(), 5);
        check("one block", QByteArray(16, 'a'), 5 + 16);
        check("one byte more", QByteArray(17, 'a'), 5 + 32);
        check("paths", QByteArray("/tmp/汉 字.qlv|/tmp/it's \"1\".mp4"), 5 + 48);
    }

    void randomWordChangesTheText()
    {
        const QByteArray plain("/a|/b");
        const QByteArray first = encipherArguments(plain, 1);
        const QByteArray second = encipherArguments(plain, 2);
        QVERIFY(first.mid(8) != second.mid(8));
        QCOMPARE(decipherArguments(first).value(), decipherArguments(second).value());
        QCOMPARE(decipherArguments(encipherArguments(plain)).value(), plain);
    }

    void refusesOtherTexts()
    {
        const auto check = [&](const char *caseName, const QByteArray &argument) {
            const CaseName inCase(caseName);
            QVERIFY(!decipherArguments(argument));
        };
        check("nothing", QByteArray());
        check("no Base64", QByteArray("/a|/b"));
        check("another first byte", QByteArray(QByteArray("\x05\0\0\0\0", 5).toBase64()));
        check("half a block", QByteArray(QByteArray("\x04xxxxabcdefgh").toBase64()));
    }
};

QTEST_GUILESS_MAIN(TestArgumentCipher)

#include "tst_argumentcipher.moc"
