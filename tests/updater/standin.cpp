// SPDX-License-Identifier: MIT
#include "updater/standin.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"
#include "MediaKits/AppInstance/LocalStore/appini.h"
#include "MediaKits/AppUpdater/Package/updatekey.h"
#include "support/testfile.h"

#include <QtTest>

// No developer's own files and locks.
static void useOwnFolders()
{
    static const QTemporaryDir user;
    for (const char *name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, QFile::encodeName(user.path()));
}

// Renamed at the end, so that what is found is whole.
StandIn::StandIn()
{
    useOwnFolders();
    QDir(updateDir()).removeRecursively();
    updateDir();
    AppIni::instance().setValue(AppIni::Key::UpdateFailedLink, QString());
    const QByteArray folder = QFile::encodeName(m_dir.path());
    writeTestProgram(path("program/updater"),
                     "cd '" + folder + "' && printf '%s\\n' \"$@\" >new && mv new told");
}

UpdateSettings StandIn::settings(const std::string &host) const
{
    return {QString::fromStdString(host), true, updateKey(), path("program/morvane")};
}

QStringList StandIn::told() const
{
    if (!QTest::qWaitFor([this] { return wasStarted(); }))
        return {};
    return QString::fromUtf8(contentOf(path("told"))).split(u'\n', Qt::SkipEmptyParts);
}

std::string answerOf(int force, const std::string &link)
{
    return R"({"code":0,"data":{"result":{"title":"墨泉 2.1","tip":"更快\n更稳","apkLink":")" +
           link + R"(","forceUpgrade":)" + std::to_string(force) + "}}}";
}

QStringList updateFiles()
{
    return QDir(updateDir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
}
