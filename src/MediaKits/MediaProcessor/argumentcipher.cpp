// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/argumentcipher.h"

#include <QRandomGenerator>
#include <QtEndian>

#include <openssl/evp.h>

#include <memory>

namespace {

constexpr int blockSize = 16;
constexpr int wordSize = 4;
constexpr char formatByte = 4;

// Known to the program and its tools; it hides nothing from anybody who looks for it.
const unsigned char sharedKey[] = {
    0x00, 0x00, 0x00, 0x00, 0x6d, 0x6f, 0x71, 0x75, 0x61, 0x6e, 0x9b, 0x27, 0xe1, 0x54, 0x0c, 0xd8,
    0x3f, 0x92, 0x7a, 0x05, 0xbe, 0x61, 0xc4, 0x18, 0x5d, 0xf3, 0x86, 0x2a, 0x70, 0xaf, 0x13, 0xe9,
};

QByteArray keyWith(const QByteArray &word)
{
    const QByteArray key(reinterpret_cast<const char *>(sharedKey), sizeof sharedKey);
    return word + key.mid(wordSize);
}

const EVP_CIPHER *cipherFor(int keySize)
{
    switch (keySize) {
    case 16:
        return EVP_aes_128_ecb();
    case 24:
        return EVP_aes_192_ecb();
    default:
        return EVP_aes_256_ecb();
    }
}

// Whole blocks only; empty when the library refuses.
QByteArray runCipher(const QByteArray &input, const QByteArray &key, bool encipher)
{
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(
        EVP_CIPHER_CTX_new(), &EVP_CIPHER_CTX_free);
    QByteArray output(input.size(), '\0');
    int written = 0;
    const bool done =
        EVP_CipherInit_ex(context.get(), cipherFor(key.size()), nullptr,
                          reinterpret_cast<const unsigned char *>(key.constData()), nullptr,
                          encipher ? 1 : 0) == 1 &&
        EVP_CIPHER_CTX_set_padding(context.get(), 0) == 1 &&
        EVP_CipherUpdate(context.get(), reinterpret_cast<unsigned char *>(output.data()), &written,
                         reinterpret_cast<const unsigned char *>(input.constData()),
                         input.size()) == 1;
    return done && written == input.size() ? output : QByteArray();
}

} // namespace

QByteArray encipherBlock(const QByteArray &block, const QByteArray &key)
{
    return runCipher(block, key, true);
}

QByteArray encipherArguments(const QByteArray &plain)
{
    return encipherArguments(plain, QRandomGenerator::global()->generate());
}

QByteArray encipherArguments(const QByteArray &plain, quint32 word)
{
    QByteArray wordBytes(wordSize, '\0');
    qToLittleEndian(word, wordBytes.data());
    const int blocks = (plain.size() + blockSize - 1) / blockSize;
    const QByteArray padded = plain.leftJustified(blocks * blockSize, '\0');
    return (formatByte + wordBytes + runCipher(padded, keyWith(wordBytes), true)).toBase64();
}

std::optional<QByteArray> decipherArguments(const QByteArray &argument)
{
    constexpr int headSize = 1 + wordSize;
    const auto decoded = QByteArray::fromBase64Encoding(
        argument, QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    const QByteArray bytes = decoded.decoded;
    const int textSize = bytes.size() - headSize;
    if (!decoded || textSize < 0 || textSize % blockSize != 0 || bytes[0] != formatByte)
        return std::nullopt;
    const QByteArray text = runCipher(bytes.mid(headSize), keyWith(bytes.mid(1, wordSize)), false);
    const int zero = text.indexOf('\0');
    return zero < 0 ? text : text.left(zero);
}
