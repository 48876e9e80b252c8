// SPDX-License-Identifier: MIT
#include "platform/deviceid.h"
#include "platform/systemversion.h"
#include "support/testfile.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <array>

class TestComputerInfo : public QObject
{
    Q_OBJECT

private slots:
    void deviceId();
    void systemVersion();
};

void TestComputerInfo::deviceId()
{
    const QTemporaryDir dir;
    const DeviceIdSources sources{
        dir.filePath(QStringLiteral("machine")), dir.filePath(QStringLiteral("product")),
        dir.filePath(QStringLiteral("block")), dir.filePath(QStringLiteral("u/UUID"))};
    const QString fresh = readDeviceId(sources);
    const QRegularExpression form(
        QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-[0-9a-f]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"));
    QVERIFY2(form.match(fresh).hasMatch(), qPrintable(fresh));
    QCOMPARE(readDeviceId(sources), QStringLiteral("CC-") + fresh);
    QCOMPARE(QFile::permissions(sources.storedUuid) & (QFile::ReadGroup | QFile::ReadOther),
             QFile::Permissions());

    const QByteArray id("0123456789abcdef0123456789abcdef");
    const QByteArray uuid("4C4C4544-0042-3510-8051-C7C04F4B3132");
    const QByteArray zeros("00000000-0000-0000-0000-000000000000");
    const std::array<QByteArray, 4> rows[] = {{id, uuid, "MA-", id},
                                              {"uninitialized", uuid, "CS-", uuid.toLower()},
                                              {"", zeros, "HD-", "S1"}};
    writeTestFile(sources.disks + QStringLiteral("/sda/removable"), "1\n");
    writeTestFile(sources.disks + QStringLiteral("/sda/device/serial"), "STICK");
    writeTestFile(sources.disks + QStringLiteral("/sdb/device/serial"), "S1 \n");
    for (const auto &[machine, product, prefix, secret] : rows) {
        writeTestFile(sources.machineId, machine + '\n');
        writeTestFile(sources.productUuid, product + '\n');
        const QByteArray salted = "Morvane device id:" + secret;
        const auto hash = QCryptographicHash::hash(salted, QCryptographicHash::Sha256).toHex();
        QCOMPARE(readDeviceId(sources), QString::fromLatin1(prefix + hash));
    }
}

void TestComputerInfo::systemVersion()
{
    const QTemporaryDir dir;
    const QString release = dir.filePath(QStringLiteral("os"));
    const QString missing = dir.filePath(QStringLiteral("none"));
    const std::pair<QByteArray, QString> rows[] = {
        {"VERSION_ID=\"12\"\nVERSION=\"12 (x)\"\nID='debian'\n", QStringLiteral("debian12")},
        {"BUILD_ID=1\n", QStringLiteral("Unknown Version")}};
    for (const auto &[text, version] : rows) {
        writeTestFile(release, text);
        QCOMPARE(readSystemVersion({missing, release}), version);
    }
}

QTEST_GUILESS_MAIN(TestComputerInfo)
#include "tst_computerinfo.moc"
