// SPDX-License-Identifier: MIT
#include "updater/unpack.h"

#include "updater/texts.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <archive.h>
#include <archive_entry.h>

#include <array>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t blockSize = 64 * 1024;
constexpr mode_t changesUser = S_ISUID | S_ISGID;

using Reader = std::unique_ptr<archive, decltype(&archive_read_free)>;

class Unpacking
{
public:
    Unpacking(archive *source, const QString &folder, const UnpackLimits &limits)
        : m_source(source), m_folder(folder), m_left(limits.bytes), m_entriesLeft(limits.entries)
    {
    }

    /// Empty when all went well.
    QString run();
    bool hasFailedToWrite() const { return m_hasFailedToWrite; }

private:
    QString take(archive_entry *entry);
    QString write(const QString &path, bool isProgram);
    QString link(const QString &path, const QString &target);
    bool passesLink(const QString &path) const;
    QString notWritten(const QString &text);

    archive *m_source;
    const QString m_folder;
    qint64 m_left;
    int m_entriesLeft;
    bool m_hasFailedToWrite = false;
    QSet<QString> m_links;
};

// The names of a path; empty for one that is absolute or goes up. "./" in front is tar's own.
QStringList namesOf(const QString &path)
{
    if (path.startsWith(QLatin1Char('/')) || path.contains(QChar::Null))
        return {};
    QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    names.removeAll(QStringLiteral("."));
    return names.contains(QStringLiteral("..")) ? QStringList() : names;
}

// A link may go up only at its beginning, where each step leaves a real folder: behind the name of
// another link, ".." could lead anywhere.
bool staysInside(const QString &target, int depth)
{
    QStringList names = target.split(QLatin1Char('/'));
    while (!names.isEmpty() && names.first() == QLatin1String("..") && depth-- > 0)
        names.removeFirst();
    return !names.isEmpty() && !names.contains(QString()) &&
           !names.contains(QStringLiteral("..")) && !names.contains(QStringLiteral("."));
}

QString damage(archive *source)
{
    return Texts::tr("升级包已损坏：") + QString::fromUtf8(archive_error_string(source));
}

QString Unpacking::run()
{
    archive_entry *entry = nullptr;
    int result = archive_read_next_header(m_source, &entry);
    for (; result == ARCHIVE_OK; result = archive_read_next_header(m_source, &entry)) {
        if (m_entriesLeft-- <= 0)
            return Texts::tr("升级包的文件太多");
        const QString error = take(entry);
        if (!error.isEmpty())
            return error;
    }
    if (result != ARCHIVE_EOF)
        return damage(m_source);
    return m_entriesLeft < 0 ? Texts::tr("升级包的文件太多") : QString();
}

QString Unpacking::take(archive_entry *entry)
{
    const QString given = QFile::decodeName(archive_entry_pathname(entry));
    const QString refused = Texts::tr("升级包含有不允许的文件：") + given;
    const QStringList names = namesOf(given);
    const mode_t type = archive_entry_filetype(entry);
    if (names.isEmpty())
        return type == AE_IFDIR && QDir::cleanPath(given) == QLatin1String(".") ? QString()
                                                                                : refused;
    const QString path = names.join(QLatin1Char('/'));
    if (archive_entry_hardlink(entry) != nullptr || passesLink(path) ||
        (archive_entry_perm(entry) & changesUser) != 0)
        return refused;

    const QString parent = QFileInfo(m_folder + QLatin1Char('/') + path).path();
    if (!QDir().mkpath(type == AE_IFDIR ? m_folder + QLatin1Char('/') + path : parent))
        return notWritten(Texts::tr("无法创建文件夹：") + path);
    if (type == AE_IFREG)
        return write(path, (archive_entry_perm(entry) & S_IXUSR) != 0);
    if (type == AE_IFLNK) {
        const QString target = QFile::decodeName(archive_entry_symlink(entry));
        return staysInside(target, names.size() - 1) ? link(path, target) : refused;
    }
    return type == AE_IFDIR ? QString() : refused;
}

QString Unpacking::write(const QString &path, bool isProgram)
{
    QFile file(m_folder + QLatin1Char('/') + path);
    if (!file.open(QIODevice::NewOnly | QIODevice::WriteOnly | QIODevice::Unbuffered))
        return notWritten(path + QLatin1String(": ") + file.errorString());
    std::array<char, blockSize> block{};
    la_ssize_t got = 0;
    while ((got = archive_read_data(m_source, block.data(), block.size())) > 0) {
        m_left -= got;
        if (m_left < 0)
            return Texts::tr("升级包的内容太大：") + path;
        if (file.write(block.data(), got) != got)
            return notWritten(path + QLatin1String(": ") + file.errorString());
    }
    if (got < 0)
        return Texts::tr("升级包已损坏：") + path;
    const mode_t mode = isProgram ? 0755 : 0644;
    return ::fchmod(file.handle(), mode) == 0 ? QString()
                                              : notWritten(Texts::tr("无法写入：") + path);
}

QString Unpacking::link(const QString &path, const QString &target)
{
    m_links.insert(path);
    const QByteArray where = QFile::encodeName(m_folder + QLatin1Char('/') + path);
    const bool made = ::symlink(QFile::encodeName(target).constData(), where.constData()) == 0;
    return made ? QString() : notWritten(Texts::tr("无法创建链接：") + path);
}

QString Unpacking::notWritten(const QString &text)
{
    m_hasFailedToWrite = true;
    return text;
}

// Whether the path is, or leads through, a link that was unpacked before.
bool Unpacking::passesLink(const QString &path) const
{
    for (int end = path.size(); end > 0; end = path.lastIndexOf(QLatin1Char('/'), end - 1)) {
        if (m_links.contains(path.left(end)))
            return true;
    }
    return false;
}

} // namespace

Unpacked unpackArchive(QFile &file, const QString &folder, QString &error,
                       const UnpackLimits &limits)
{
    constexpr mode_t othersMayRead = 022;
    const Reader reader(archive_read_new(), archive_read_free);
    archive_read_support_format_tar(reader.get());
    archive_read_support_filter_zstd(reader.get());
    archive_read_support_filter_gzip(reader.get());
    archive_read_support_filter_xz(reader.get());
    if (::lseek(file.handle(), file.pos(), SEEK_SET) < 0 ||
        archive_read_open_fd(reader.get(), file.handle(), blockSize) != ARCHIVE_OK) {
        error = damage(reader.get());
        return Unpacked::Unfit;
    }
    const mode_t usual = ::umask(othersMayRead);
    Unpacking unpacking(reader.get(), folder, limits);
    error = unpacking.run();
    ::umask(usual);
    if (error.isEmpty())
        return Unpacked::Whole;
    return unpacking.hasFailedToWrite() ? Unpacked::NotWritten : Unpacked::Unfit;
}
