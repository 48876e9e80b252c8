// SPDX-License-Identifier: MIT
#include "platform/openfolder.h"

#include "platform/workplace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Descriptor = std::shared_ptr<const int>;

Descriptor held(int descriptor)
{
    if (descriptor < 0)
        return nullptr;
    return {new int(descriptor), [](const int *number) {
                ::close(*number);
                delete number;
            }};
}

std::string wayTo(int folder)
{
    return "/proc/self/fd/" + std::to_string(folder);
}

// In bytes, since not every name is a text.
std::vector<std::string> namesIn(int folder)
{
    std::vector<std::string> names;
    DIR *entries = ::opendir(wayTo(folder).c_str());
    while (const dirent *entry = entries ? ::readdir(entries) : nullptr) {
        const std::string name(entry->d_name);
        if (name != "." && name != "..")
            names.push_back(name);
    }
    if (entries)
        ::closedir(entries);
    return names;
}

bool removeEntry(int folder, const std::string &name)
{
    if (::unlinkat(folder, name.c_str(), 0) == 0 || errno == ENOENT)
        return true;
    if (errno != EISDIR && errno != EPERM)
        return false;
    const Descriptor inner =
        held(::openat(folder, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat facts = {};
    if (!inner || ::fstat(*inner, &facts) != 0)
        return false;
    // A refusal shows itself when the entries are deleted.
    if ((facts.st_mode & S_IRWXU) != S_IRWXU)
        ::chmod(wayTo(*inner).c_str(), (facts.st_mode & ~S_IFMT) | S_IRWXU);
    for (const std::string &entry : namesIn(*inner)) {
        if (!removeEntry(*inner, entry))
            return false;
    }
    return ::unlinkat(folder, name.c_str(), AT_REMOVEDIR) == 0;
}

} // namespace

OpenFolder OpenFolder::at(const QString &path)
{
    OpenFolder folder;
    folder.m_descriptor = held(openWorkPlace(QFile::encodeName(path).toStdString()));
    return folder;
}

QString OpenFolder::path() const
{
    return m_descriptor ? QString::fromStdString(wayTo(*m_descriptor)) : QString();
}

QString OpenFolder::filePath(const QString &name) const
{
    return m_descriptor ? path() + QLatin1Char('/') + name : QString();
}

bool OpenFolder::remove(const QString &name) const
{
    return m_descriptor && removeEntry(*m_descriptor, QFile::encodeName(name).toStdString());
}

bool makePrivateFolder(const QString &path)
{
    const QString folder = QDir::cleanPath(path);
    const QByteArray name = QFile::encodeName(folder);
    QDir().mkpath(QFileInfo(folder).path());
    ::mkdir(name.constData(), S_IRWXU);
    const Descriptor made =
        held(::open(name.constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return made && makePrivate(*made);
}

QString userNumber()
{
    return QString::number(::geteuid());
}
