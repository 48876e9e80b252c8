// SPDX-License-Identifier: MIT
#include "platform/deviceid.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUuid>

namespace {

constexpr int maxValueLength = 128;

QString valueIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.read(maxValueLength)).trimmed();
}

// The ids of a machine are meant to stay on it: others could follow the user by them.
QString hashed(const char *prefix, const QString &value)
{
    const QByteArray salted = QByteArrayLiteral("Morvane device id:") + value.toUtf8();
    const QByteArray digest = QCryptographicHash::hash(salted, QCryptographicHash::Sha256);
    return QLatin1String(prefix) + QString::fromLatin1(digest.toHex());
}

// Images that never booted hold the word "uninitialized", which would be one id for many machines.
QString machineId(const QString &path)
{
    static const QRegularExpression form(QStringLiteral("^[0-9a-f]{32}$"));
    const QString value = valueIn(path);
    return form.match(value).hasMatch() ? value : QString();
}

// Boards whose maker left the field out tell zeros or some words.
QString productUuid(const QString &path)
{
    const QString value = valueIn(path).toLower();
    return QUuid::fromString(value).isNull() ? QString() : value;
}

QString firstDiskSerial(const QString &disks)
{
    const QDir dir(disks);
    for (const QString &disk : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString path = dir.filePath(disk);
        if (valueIn(path + QLatin1String("/removable")) == QLatin1String("1"))
            continue;
        const QString serial = valueIn(path + QLatin1String("/device/serial"));
        if (!serial.isEmpty())
            return serial;
    }
    return {};
}

QString newUuid()
{
    const QUuid id = QUuid::createUuid();
    if (id.isNull())
        return {};
    const uchar *d = id.data4;
    return QString::asprintf("%08X-%04X-%04x-%02X%02X-%02X%02X%02X%02X%02X%02X", id.data1, id.data2,
                             id.data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
}

void store(const QString &uuid, const QString &path)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(uuid.toLatin1());
    // commit() doesn't look at what is still buffered.
    if (!file.flush())
        file.cancelWriting();
    file.commit();
}

} // namespace

DeviceIdSources DeviceIdSources::ofSystem()
{
    return {QStringLiteral("/etc/machine-id"), QStringLiteral("/sys/class/dmi/id/product_uuid"),
            QStringLiteral("/sys/block"),
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                QStringLiteral("/Torvale/Cryptography/UUID")};
}

QString readDeviceId(const DeviceIdSources &sources)
{
    const QString machine = machineId(sources.machineId);
    if (!machine.isEmpty())
        return hashed("MA-", machine);
    const QString product = productUuid(sources.productUuid);
    if (!product.isEmpty())
        return hashed("CS-", product);
    const QString serial = firstDiskSerial(sources.disks);
    if (!serial.isEmpty())
        return hashed("HD-", serial);
    const QString stored = valueIn(sources.storedUuid);
    if (!stored.isEmpty())
        return QStringLiteral("CC-") + stored;
    const QString uuid = newUuid();
    if (!uuid.isEmpty())
        store(uuid, sources.storedUuid);
    return uuid;
}
