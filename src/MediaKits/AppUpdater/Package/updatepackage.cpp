// SPDX-License-Identifier: MIT
#include "MediaKits/AppUpdater/Package/updatepackage.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <openssl/evp.h>

#include <memory>

namespace {

constexpr int mostHeaderBytes = 1024;

struct Header
{
    QByteArray signedText;
    QByteArray signature;
    int version = 0;
    qint64 size = 0;
    QByteArray hash; ///< hexadecimal
    qint64 length = 0;
};

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(UpdatePackage)
};

// An unfit text gives a header without a signature.
Header parseHeader(const QByteArray &start)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(MORVANE-UPDATE-1\nversion ([1-9][0-9]{0,8})\nsize ([1-9][0-9]{0,11})\n"
                       "sha512 ([0-9a-f]{128})\n)signature ([A-Za-z0-9+/]{86}==)\n\n"));
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(start));
    Header header;
    if (!match.hasMatch())
        return header;
    header.signedText = match.captured(1).toLatin1();
    header.version = match.captured(2).toInt();
    header.size = match.captured(3).toLongLong();
    header.hash = match.captured(4).toLatin1();
    // The last letter could be another as well: four of its bits stand for nothing.
    const QByteArray signature = match.captured(5).toLatin1();
    header.signature = QByteArray::fromBase64(signature);
    if (header.signature.toBase64() != signature)
        return {};
    header.length = match.capturedLength();
    return header;
}

const unsigned char *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

bool isSignedFor(const QByteArray &key, const Header &header)
{
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> publicKey(
        EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, bytesOf(key), size_t(key.size())),
        EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          EVP_MD_CTX_free);
    return publicKey && context &&
           EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, publicKey.get()) == 1 &&
           EVP_DigestVerify(context.get(), bytesOf(header.signature),
                            size_t(header.signature.size()), bytesOf(header.signedText),
                            size_t(header.signedText.size())) == 1;
}

QString refusalOf(const QFile &file, const Header &header, const QByteArray &key,
                  int installedVersion)
{
    if (key.isEmpty())
        return Texts::tr("此版本不接受升级包");
    if (header.signature.isEmpty() || !isSignedFor(key, header))
        return Texts::tr("升级包的签名无效");
    if (header.size > largestPackage || file.size() != header.length + header.size)
        return Texts::tr("升级包不完整");
    if (header.version <= installedVersion)
        return Texts::tr("升级包不比当前版本新");
    return {};
}

bool hasContentOf(QFile &file, const UpdatePackage &package)
{
    constexpr qint64 blockBytes = 1024 * 1024;
    QCryptographicHash hash(QCryptographicHash::Sha512);
    if (!file.seek(package.contentAt))
        return false;
    while (!file.atEnd()) {
        const QByteArray block = file.read(blockBytes);
        if (block.isEmpty() || QThread::currentThread()->isInterruptionRequested())
            return false;
        hash.addData(block);
    }
    return hash.result().toHex() == package.hash;
}

} // namespace

UpdatePackage readUpdateLines(QFile &file, const QByteArray &key, int installedVersion)
{
    file.seek(0);
    const Header header = parseHeader(file.read(mostHeaderBytes));
    UpdatePackage package;
    package.refusal = refusalOf(file, header, key, installedVersion);
    package.version = header.version;
    package.contentAt = header.length;
    package.hash = header.hash;
    return package;
}

UpdatePackage readUpdatePackage(QFile &file, const QByteArray &key, int installedVersion)
{
    UpdatePackage package = readUpdateLines(file, key, installedVersion);
    if (package.isAccepted() && !hasContentOf(file, package))
        package.refusal = Texts::tr("升级包已损坏");
    return package;
}
