// SPDX-License-Identifier: MIT
#include "platform/runtimeroot.h"

#include "platform/openfolder.h"
#include "platform/temporaryroot.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// The longest name in it is that of a player's socket, with a UUID: 49 bytes with its slash. The
// path of a socket has room for 107.
constexpr int longestRoot = int(sizeof sockaddr_un::sun_path) - 1 - 49;

bool isShort(const QString &path)
{
    return QFile::encodeName(path).size() <= longestRoot;
}

// Started through sudo, the variable may name another user's folder.
bool isOursAlone(const QString &path)
{
    struct stat facts = {};
    return ::lstat(QFile::encodeName(path).constData(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
           facts.st_uid == ::geteuid() && (facts.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool isDeadSocket(const QByteArray &path)
{
    struct stat facts = {};
    if (::lstat(path.constData(), &facts) != 0 || facts.st_uid != ::geteuid())
        return false;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= int(sizeof address.sun_path))
        return false;
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return false;
    const auto *place = reinterpret_cast<const sockaddr *>(&address);
    const bool isDead = ::connect(socket, place, sizeof address) != 0 && errno == ECONNREFUSED;
    ::close(socket);
    return isDead;
}

} // namespace

QString runtimeRoot()
{
    const QString login = QDir::cleanPath(QFile::decodeName(qgetenv("XDG_RUNTIME_DIR")));
    if (QDir::isAbsolutePath(login) && isShort(login) && isOursAlone(login))
        return login;
    const QString root = temporaryRoot();
    if (isShort(root))
        return root;
    const QString shortRoot = QStringLiteral("/tmp/MorvaneLocal-") + userNumber();
    return makePrivateFolder(shortRoot) ? shortRoot : root;
}

void removeDeadSockets(const QString &pattern)
{
    for (const QString &folder : {runtimeRoot(), QDir::tempPath()}) {
        for (const QFileInfo &file : QDir(folder).entryInfoList({pattern}, QDir::System)) {
            const QByteArray path = QFile::encodeName(file.filePath());
            if (isDeadSocket(path))
                ::unlink(path.constData());
        }
    }
}
