// SPDX-License-Identifier: MIT
#include "platform/deviceid.h"
#include "platform/systemversion.h"
#include "support/testfile.h"

#include <QtTest>

#include <array>

class TestComputerInfo : public QObject
{
    Q_OBJECT

private slots:
    void deviceId()
    {
        const QTemporaryDir dir;
        const DeviceIdSources sources{dir.filePath("machine"_s), dir.filePath("product"_s),
                                      dir.filePath("block"_s), dir.filePath("u/UUID"_s)};
        const QString fresh = readDeviceId(sources);
        const QRegularExpression form(
            "^[0-9A-F]{8}-[0-9A-F]{4}-[0-9a-f]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"_s);
        QVERIFY2(form.match(fresh).hasMatch(), qPrintable(fresh));
        QCOMPARE(readDeviceId(sources), "CC-"_s + fresh);
        QCOMPARE(QFile::permissions(sources.storedUuid) & (QFile::ReadGroup | QFile::ReadOther),
                 QFile::Permissions());

        const QByteArray id("0123456789abcdef0123456789abcdef");
        const QByteArray uuid("4C4C4544-0042-3510-8051-C7C04F4B3132");
        const QByteArray zeros("00000000-0000-0000-0000-000000000000");
        const std::array<QByteArray, 4> rows[] = {{id, uuid, "MA-", id},
                                                  {"uninitialized", uuid, "CS-", uuid.toLower()},
                                                  {"", zeros, "HD-", "S1"}};
        writeTestFile(sources.disks + "/sda/removable"_s, "1\n");
        writeTestFile(sources.disks + "/sda/device/serial"_s, "STICK");
        writeTestFile(sources.disks + "/sdb/device/serial"_s, "S1 \n");
        for (const auto &[machine, product, prefix, secret] : rows) {
            writeTestFile(sources.machineId, machine + '\n');
            writeTestFile(sources.productUuid, product + '\n');
            const QByteArray salted = "Morvane device id:" + secret;
            const auto hash = QCryptographicHash::hash(salted, QCryptographicHash::Sha256).toHex();
            QCOMPARE(readDeviceId(sources), QString::fromLatin1(prefix + hash));
        }
    }

    void systemVersion()
    {
        const QTemporaryDir dir;
        const QString release = dir.filePath("os"_s);
        const QString missing = dir.filePath("none"_s);
        const std::pair<QByteArray, QString> rows[] = {
            {"VERSION_ID=\"12\"\nVERSION=\"12 (x)\"\nID='debian'\n", "debian12"_s},
            {"BUILD_ID=1\n", "Unknown Version"_s}};
        for (const auto &[text, version] : rows) {
            writeTestFile(release, text);
            QCOMPARE(readSystemVersion({missing, release}), version);
        }
    }
};

QTEST_GUILESS_MAIN(TestComputerInfo)
#include "tst_computerinfo.moc"
