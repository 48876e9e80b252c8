// SPDX-License-Identifier: MIT
#include <QDirIterator>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QTest>

namespace {

struct Room
{
    QLatin1String name;
    QLatin1String folder;
    QLatin1String mayUse;

    bool uses(QLatin1String other) const
    {
        return QString(mayUse).split(QLatin1Char(' ')).contains(other);
    }
    bool hasWidgets() const
    {
        const QLatin1String controls("controls");
        return name == controls || uses(controls);
    }
};

// Every room with the rooms that it may include. Those that may not use the controls may not use
// Qt Widgets either.
const QVector<Room> &rooms()
{
    const auto room = [](const char *name, const char *folder, const char *mayUse) {
        return Room{QLatin1String(name), QLatin1String(folder), QLatin1String(mayUse)};
    };
    static const QVector<Room> table = {
        room("platform", "platform/", ""),
        room("log", "MediaKits/Logger/", "platform"),
        room("catalogue", "catalogue/", ""),
        room("stores", "MediaKits/AppInstance/LocalStore/", "catalogue platform"),
        room("formats", "MediaKits/MediaFormats/", "stores platform"),
        room("processors", "MediaKits/MediaProcessor/", "log platform"),
        room("probing", "MediaKits/MediaInfo/", "processors catalogue formats log platform"),
        room("tasks", "MediaKits/MediaTasksManager/",
             "processors probing formats stores catalogue log platform"),
        room("http", "http/", ""),
        room("tracking", "MediaKits/DataTracker/", "http stores log platform"),
        room("manifest", "MediaKits/Manifest/", "processors log"),
        room("controls", "controls/", "platform"),
        room("browser", "browser/", "controls tracking stores log platform"),
        room("updater", "MediaKits/AppUpdater/", "controls tracking stores log platform"),
        room("player", "MediaKits/Player/",
             "controls tracking tasks processors formats stores log platform"),
        room("framework", "MediaKits/FunctionPage/Framework/",
             "player controls tracking tasks probing formats stores catalogue log platform"),
        room("convertpage", "MediaKits/FunctionPage/VideoConvert/",
             "framework player controls tracking tasks probing formats stores catalogue log "
             "platform"),
        room("compresspage", "MediaKits/FunctionPage/VideoCompress/",
             "framework player controls tracking tasks probing formats stores catalogue log "
             "platform"),
        room("cutpage", "MediaKits/FunctionPage/VideoCut/",
             "framework player controls tracking tasks probing formats stores catalogue log "
             "platform"),
        room("mergepage", "MediaKits/FunctionPage/VideoMerge/",
             "framework player controls tracking tasks probing formats stores catalogue log "
             "platform"),
        room("audiopage", "MediaKits/FunctionPage/AudioConvert/",
             "framework player controls tracking tasks probing formats stores catalogue log "
             "platform"),
        room("mainwindow", "MediaKits/MainWindow/",
             "convertpage compresspage cutpage mergepage audiopage framework player updater "
             "browser controls tracking formats stores log platform"),
        room("resources", "resources/", "controls"),
        room("displayscale", "MediaKits/AppInstance/displayscale", "platform"),
        room("program", "MediaKits/AppInstance/",
             "resources displayscale mainwindow framework updater browser controls manifest "
             "tracking formats stores "
             "catalogue log platform"),
        room("cli", "cli/", "tasks processors probing formats stores catalogue log platform"),
    };
    return table;
}

// The room of a file below src/, null when no room has it.
const Room *roomOf(const QString &path)
{
    for (const Room &room : rooms()) {
        if (path.startsWith(room.folder))
            return &room;
    }
    return nullptr;
}

// What `pattern` captures in `text`.
QStringList captured(const QString &text, const char *pattern)
{
    const QRegularExpression expression(QLatin1String(pattern),
                                        QRegularExpression::MultilineOption);
    QStringList names;
    QRegularExpressionMatchIterator matches = expression.globalMatch(text);
    while (matches.hasNext())
        names += matches.next().captured(1);
    return names;
}

// Hands the path below `folder` and the text of every file there to `visit`.
template<typename Visit>
void visitFiles(const char *folder, const QStringList &namePatterns, Visit visit)
{
    const QDir dir(QLatin1String(MORVANE_SOURCE_DIR "/") + QLatin1String(folder));
    QDirIterator walk(dir.path(), namePatterns, QDir::Files, QDirIterator::Subdirectories);
    QVERIFY2(walk.hasNext(), folder);
    while (walk.hasNext()) {
        QFile file(walk.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        visit(dir.relativeFilePath(file.fileName()), QString::fromUtf8(file.readAll()));
    }
}

} // namespace

class TstRooms : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_faults.clear(); }
    void noIncludeCrossesRooms();
    void noWidgetsOrPlatformChoices();
    void everyFileHasItsLicenceLine();
    void cleanup() { QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(QLatin1Char('\n')))); }

private:
    const QStringList m_sources = {QStringLiteral("*.h"), QStringLiteral("*.cpp")};
    QStringList m_faults;
};

void TstRooms::noIncludeCrossesRooms()
{
    visitFiles("src", m_sources, [this](const QString &path, const QString &text) {
        const Room *from = roomOf(path);
        if (from == nullptr)
            m_faults += path + QLatin1String(" lies in no known room");
        for (const QString &name : captured(text, "^[ \\t]*#[ \\t]*include[ \\t]*\"([^\"]+)")) {
            if (name.startsWith(QLatin1String("ui_")))
                continue;
            const Room *to = roomOf(name);
            // A room may use only rooms that stand before it, so there is no circle.
            if (from != nullptr && to != from &&
                (to == nullptr || to > from || !from->uses(to->name)))
                m_faults += QStringLiteral("%1 may not include %2").arg(path, name);
        }
    });
}

void TstRooms::noWidgetsOrPlatformChoices()
{
    const QDir widgets(QLibraryInfo::location(QLibraryInfo::HeadersPath) +
                       QLatin1String("/QtWidgets"));
    visitFiles("src", m_sources, [&](const QString &path, const QString &text) {
        const Room *room = roomOf(path);
        const bool engine = room == nullptr || !room->hasWidgets();
        for (const QString &name : captured(text, "^[ \\t]*#[ \\t]*include[ \\t]*<([^>]+)")) {
            // Modules that bring the widgets along.
            if (!engine)
                break;
            if (name.contains(QRegularExpression(QStringLiteral("^Qt(Widgets|Svg|Print)"))) ||
                widgets.exists(name))
                m_faults += QStringLiteral("%1 includes %2").arg(path, name);
        }
        if (path.startsWith(QLatin1String("platform/")))
            return;
        const char *choice = "\\b(Q_OS_\\w+|__linux__|__unix__|__APPLE__|_WIN32)\\b";
        for (const QString &name : captured(text, choice))
            m_faults += QStringLiteral("%1 chooses by %2").arg(path, name);
    });
}

void TstRooms::everyFileHasItsLicenceLine()
{
    const QStringList buildFiles = {QStringLiteral("CMakeLists.txt"), QStringLiteral("*.cmake")};
    for (const char *folder : {"src", "tests", "tools", "bench", "cmake"}) {
        visitFiles(folder, m_sources + buildFiles, [&](const QString &path, const QString &text) {
            const QLatin1String mark(QDir::match(m_sources, QFileInfo(path).fileName()) ? "//"
                                                                                        : "#");
            if (!text.startsWith(mark + QLatin1String(" SPDX-License-Identifier: MIT\n")))
                m_faults += path + QLatin1String(" lacks its licence line");
        });
    }
}

QTEST_GUILESS_MAIN(TstRooms)
#include "tst_rooms.moc"
