// SPDX-License-Identifier: MIT
#include "platform/movefile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t permissionBits = 0777;

class Descriptor
{
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor() { close(); }
    Q_DISABLE_COPY(Descriptor)

    int get() const { return m_descriptor; }
    bool isOpen() const { return m_descriptor >= 0; }
    // Some file systems tell only here that something wasn't written.
    bool close()
    {
        const bool isClosed = m_descriptor < 0 || ::close(m_descriptor) == 0;
        m_descriptor = -1;
        return isClosed;
    }

private:
    int m_descriptor;
};

// What a file system says that doesn't know a way, as shared folders of virtual machines, some
// network and most FUSE file systems don't.
bool isUnknownWay(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EPERM;
}

MoveResult failure(QString &error)
{
    if (errno == EEXIST)
        return MoveResult::NameTaken;
    error = QString::fromLocal8Bit(std::strerror(errno));
    return MoveResult::Failed;
}

// A plain rename replaces what has the new name: that is an empty file which was made for it here,
// and looked at again right before.
MoveResult renameOverOwn(const char *from, const char *to, QString &error)
{
    struct stat source = {};
    if (::stat(from, &source) != 0)
        return failure(error);
    const Descriptor claim(
        ::open(to, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, source.st_mode & permissionBits));
    if (!claim.isOpen())
        return failure(error);
    struct stat made = {};
    struct stat present = {};
    const bool isOurs = ::fstat(claim.get(), &made) == 0 && ::lstat(to, &present) == 0 &&
                        made.st_ino == present.st_ino && made.st_dev == present.st_dev &&
                        present.st_size == 0;
    if (!isOurs)
        return MoveResult::NameTaken;
    if (::rename(from, to) == 0)
        return MoveResult::Moved;
    ::unlink(to);
    return MoveResult::NeedsCopy;
}

// @return whether all bytes of the source have been written
bool copyBytes(int source, int target, const std::atomic<bool> &isCancelled)
{
    constexpr size_t pieceSize = 1024 * 1024;
    std::vector<char> piece(pieceSize);
    while (!isCancelled) {
        const ssize_t count = ::read(source, piece.data(), piece.size());
        if (count == 0)
            return true;
        if (count < 0 && errno != EINTR)
            return false;
        for (ssize_t done = 0; done < count;) {
            const ssize_t written = ::write(target, piece.data() + done, size_t(count - done));
            if (written < 0 && errno != EINTR)
                return false;
            done += written > 0 ? written : 0;
        }
    }
    errno = ECANCELED;
    return false;
}

bool hasSize(int descriptor, off_t size)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return false;
    errno = EIO;
    return status.st_size == size;
}

} // namespace

MoveResult moveWithoutReplacing(const QString &from, const QString &to, QString &error)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) ==
        0)
        return MoveResult::Moved;
    if (errno == EXDEV)
        return MoveResult::NeedsCopy;
    if (!isUnknownWay(errno))
        return failure(error);
    // A second name for the file refuses a taken one as well.
    if (::link(source.constData(), target.constData()) == 0) {
        ::unlink(source.constData());
        return MoveResult::Moved;
    }
    if (!isUnknownWay(errno))
        return failure(error);
    return renameOverOwn(source.constData(), target.constData(), error);
}

MoveResult copyWithoutReplacing(const QString &from, const QString &to,
                                const std::atomic<bool> &isCancelled, QString &error)
{
    const QByteArray sourceName = QFile::encodeName(from);
    const QByteArray targetName = QFile::encodeName(to);
    const Descriptor source(::open(sourceName.constData(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (!source.isOpen() || ::fstat(source.get(), &status) != 0)
        return failure(error);
    Descriptor target(::open(targetName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                             status.st_mode & permissionBits));
    if (!target.isOpen())
        return failure(error);
    const bool isWhole = copyBytes(source.get(), target.get(), isCancelled) &&
                         ::fsync(target.get()) == 0 && hasSize(target.get(), status.st_size) &&
                         target.close();
    if (!isWhole) {
        const int reason = errno;
        ::unlink(targetName.constData());
        errno = reason == EEXIST ? EIO : reason;
        return failure(error);
    }
    ::unlink(sourceName.constData());
    return MoveResult::Moved;
}
