// SPDX-License-Identifier: MIT
#include "support/utf8.h"

#include <QtTest>

namespace {

struct Room
{
    QString name;
    QString folder; ///< or what its files begin with
    QStringList links;
    bool hasWidgets = false;
};

QString textOf(const char *path)
{
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The rooms as they are built, each below all that it links.
const QVector<Room> &rooms()
{
    static const QVector<Room> table = [] {
        QVector<Room> built;
        QMap<QString, bool> widgets{{"Qt5::Widgets"_s, true}};
        const QStringList lines = textOf(MORVANE_ROOMS_FILE).split(u'\n', Qt::SkipEmptyParts);
        for (const QString &line : lines) {
            QStringList words = line.split(u' ', Qt::SkipEmptyParts);
            Room room{words.takeFirst(), words.takeFirst(), {}, false};
            for (const QString &link : qAsConst(words)) {
                room.hasWidgets = room.hasWidgets || widgets.value(link);
                if (widgets.contains(link) && !link.contains("::"_s))
                    room.links += link;
            }
            widgets.insert(room.name, room.hasWidgets);
            built += room;
        }
        return built;
    }();
    return table;
}

// The room of a file below src/: the one with the longest beginning of its path; null when there
// is none.
const Room *roomOf(const QString &path)
{
    const Room *found = nullptr;
    for (const Room &room : rooms()) {
        if (path.startsWith(room.folder) && (!found || room.folder.size() > found->folder.size()))
            found = &room;
    }
    return found;
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
    // Not one more and not one less.
    void roomsLinkWhatTheyInclude()
    {
        QMap<QString, QSet<QString>> included;
        visitFiles("src", m_sources, [&](const QString &path, const QString &text) {
            const Room *from = roomOf(path);
            if (from == nullptr)
                m_faults += path + " lies in no known room"_s;
            for (const QString &name : captured(text, "^[ \\t]*#[ \\t]*include[ \\t]*\"([^\"]+)")) {
                if (from == nullptr || name.startsWith("ui_"_s))
                    continue;
                const Room *to = roomOf(name);
                if (to != from && (to == nullptr || !from->links.contains(to->name)))
                    m_faults += "%1 may not include %2"_s.arg(path, name);
                else if (to != from)
                    included[from->name] += to->name;
            }
        });
        for (const Room &room : rooms()) {
            for (const QString &link : room.links) {
                if (!included[room.name].contains(link))
                    m_faults += "%1 links %2 for nothing"_s.arg(room.name, link);
            }
        }
    }

    // Its table has name, folder and links of each room.
    void theDocumentTellsTheRooms()
    {
        QStringList told;
        const QRegularExpression row("^\\| (\\w+) \\| `([^`]+)` \\| .* \\| ([\\w, ]*)\\|$"_s,
                                     QRegularExpression::MultilineOption);
        QRegularExpressionMatchIterator rows =
            row.globalMatch(textOf(MORVANE_SOURCE_DIR "/docs/architecture.md"));
        while (rows.hasNext()) {
            const QRegularExpressionMatch match = rows.next();
            QStringList links = match.captured(3).trimmed().split(", "_s);
            links.removeAll(QString());
            links.sort();
            told += match.captured(1) + u' ' + match.captured(2) + u' ' + links.join(u' ');
        }
        QStringList built;
        for (const Room &room : rooms()) {
            QStringList links = room.links;
            links.sort();
            built += room.name + u' ' + room.folder + u' ' + links.join(u' ');
        }
        QVERIFY(!built.isEmpty());
        told.sort();
        built.sort();
        QCOMPARE(told, built);
    }

    void noWidgetsOrPlatformChoices()
    {
        const QDir widgets(QLibraryInfo::location(QLibraryInfo::HeadersPath) + "/QtWidgets"_s);
        visitFiles("src", m_sources, [&](const QString &path, const QString &text) {
            const Room *room = roomOf(path);
            const bool engine = room == nullptr || !room->hasWidgets;
            for (const QString &name : captured(text, "^[ \\t]*#[ \\t]*include[ \\t]*<([^>]+)")) {
                // Modules that bring the widgets along.
                if (!engine)
                    break;
                if (name.contains(QRegularExpression("^Qt(Widgets|Svg|Print)"_s)) ||
                    widgets.exists(name))
                    m_faults += "%1 includes %2"_s.arg(path, name);
            }
            if (path.startsWith("platform/"_s))
                return;
            const char *choice = "\\b(Q_OS_\\w+|__linux__|__unix__|__APPLE__|_WIN32)\\b";
            for (const QString &name : captured(text, choice))
                m_faults += "%1 chooses by %2"_s.arg(path, name);
        });
    }

    void everyFileHasItsLicenceLine()
    {
        const QStringList buildFiles = {"CMakeLists.txt"_s, "*.cmake"_s};
        for (const char *folder : {"src", "tests", "tools", "bench", "cmake"}) {
            visitFiles(folder, m_sources + buildFiles,
                       [&](const QString &path, const QString &text) {
                           const QLatin1String mark(
                               QDir::match(m_sources, QFileInfo(path).fileName()) ? "//" : "#");
                           if (!text.startsWith(mark + " SPDX-License-Identifier: MIT\n"_s))
                               m_faults += path + " lacks its licence line"_s;
                       });
        }
    }

    void cleanup() { QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n'))); }

private:
    const QStringList m_sources = {"*.h"_s, "*.cpp"_s};
    QStringList m_faults;
};

QTEST_GUILESS_MAIN(TstRooms)
#include "tst_rooms.moc"
