// SPDX-License-Identifier: MIT
#include <QDirIterator>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QTest>

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
        QMap<QString, bool> widgets{{QStringLiteral("Qt5::Widgets"), true}};
        const QStringList lines =
            textOf(MORVANE_ROOMS_FILE).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString &line : lines) {
            QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            Room room{words.takeFirst(), words.takeFirst(), {}, false};
            for (const QString &link : qAsConst(words)) {
                room.hasWidgets = room.hasWidgets || widgets.value(link);
                if (widgets.contains(link) && !link.contains(QLatin1String("::")))
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
    void roomsLinkWhatTheyInclude();
    void theDocumentTellsTheRooms();
    void noWidgetsOrPlatformChoices();
    void everyFileHasItsLicenceLine();
    void cleanup() { QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(QLatin1Char('\n')))); }

private:
    const QStringList m_sources = {QStringLiteral("*.h"), QStringLiteral("*.cpp")};
    QStringList m_faults;
};

// Not one more and not one less.
void TstRooms::roomsLinkWhatTheyInclude()
{
    QMap<QString, QSet<QString>> included;
    visitFiles("src", m_sources, [&](const QString &path, const QString &text) {
        const Room *from = roomOf(path);
        if (from == nullptr)
            m_faults += path + QLatin1String(" lies in no known room");
        for (const QString &name : captured(text, "^[ \\t]*#[ \\t]*include[ \\t]*\"([^\"]+)")) {
            if (from == nullptr || name.startsWith(QLatin1String("ui_")))
                continue;
            const Room *to = roomOf(name);
            if (to != from && (to == nullptr || !from->links.contains(to->name)))
                m_faults += QStringLiteral("%1 may not include %2").arg(path, name);
            else if (to != from)
                included[from->name] += to->name;
        }
    });
    for (const Room &room : rooms()) {
        for (const QString &link : room.links) {
            if (!included[room.name].contains(link))
                m_faults += QStringLiteral("%1 links %2 for nothing").arg(room.name, link);
        }
    }
}

// Its table has name, folder and links of each room.
void TstRooms::theDocumentTellsTheRooms()
{
    QStringList told;
    const QRegularExpression row(
        QStringLiteral("^\\| (\\w+) \\| `([^`]+)` \\| .* \\| ([\\w, ]*)\\|$"),
        QRegularExpression::MultilineOption);
    QRegularExpressionMatchIterator rows =
        row.globalMatch(textOf(MORVANE_SOURCE_DIR "/docs/architecture.md"));
    while (rows.hasNext()) {
        const QRegularExpressionMatch match = rows.next();
        QStringList links = match.captured(3).trimmed().split(QStringLiteral(", "));
        links.removeAll(QString());
        links.sort();
        told += match.captured(1) + QLatin1Char(' ') + match.captured(2) + QLatin1Char(' ') +
                links.join(QLatin1Char(' '));
    }
    QStringList built;
    for (const Room &room : rooms()) {
        QStringList links = room.links;
        links.sort();
        built += room.name + QLatin1Char(' ') + room.folder + QLatin1Char(' ') +
                 links.join(QLatin1Char(' '));
    }
    QVERIFY(!built.isEmpty());
    told.sort();
    built.sort();
    QCOMPARE(told, built);
}

void TstRooms::noWidgetsOrPlatformChoices()
{
    const QDir widgets(QLibraryInfo::location(QLibraryInfo::HeadersPath) +
                       QLatin1String("/QtWidgets"));
    visitFiles("src", m_sources, [&](const QString &path, const QString &text) {
        const Room *room = roomOf(path);
        const bool engine = room == nullptr || !room->hasWidgets;
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
