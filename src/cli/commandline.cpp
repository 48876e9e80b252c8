// SPDX-License-Identifier: MIT
#include "cli/commandline.h"

#include "catalogue/encparamcatalog.h"
#include "cli/dubvalue.h"
#include "cli/markvalue.h"
#include "cli/textvalues.h"
#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <iterator>

namespace {

struct CommandRow
{
    const char *word;
    Command command;
    const char *options; ///< names of the options it takes
};

const CommandRow commandRows[] = {
    {"categories", Command::Categories, "json"},
    {"presets", Command::Presets, "json category"},
    {"probe", Command::Probe, "json reader"},
    {"convert", Command::Convert,
     "json preset out name from to crop speed beauty watermark delogo dub film-volume mute-film "
     "jobs dry-run strict"},
    {"gif", Command::Gif, "json out name from to size fps quality jobs dry-run strict"},
    {"merge", Command::Merge, "json preset out name strict"},
    {"shots", Command::Shots, "json at every from to format scale long sheet out"},
    {"record", Command::Record, "json area window sound seconds out"},
};

QString tr(const char *text)
{
    return QCoreApplication::translate("CommandLine", text);
}

QList<QCommandLineOption> optionsOf(const CommandRow &row)
{
    static const QStringList flags{QStringLiteral("json"),      QStringLiteral("dry-run"),
                                   QStringLiteral("strict"),    QStringLiteral("quality"),
                                   QStringLiteral("mute-film"), QStringLiteral("long")};
    QList<QCommandLineOption> options;
    const QStringList names = QString(QLatin1String(row.options)).split(QLatin1Char(' '));
    for (const QString &name : names) {
        QCommandLineOption option(name);
        if (!flags.contains(name))
            option.setValueName(name);
        options += option;
    }
    return options;
}

// Reads the options' values one by one; the first that isn't one is kept as the error.
class ValueReader
{
public:
    explicit ValueReader(const QCommandLineParser &parser) : m_parser(parser) {}

    QString text(const char *name) const { return m_parser.value(QLatin1String(name)); }
    bool isSet(const char *name) const { return m_parser.isSet(QLatin1String(name)); }

    template<class T, class Parse>
    std::optional<T> value(const char *name, Parse parse)
    {
        return isSet(name) ? read<T>(name, text(name), parse) : std::nullopt;
    }

    /// Of an option that may be given several times.
    template<class T, class Parse>
    QVector<T> values(const char *name, Parse parse)
    {
        QVector<T> results;
        for (const QString &given : m_parser.values(QLatin1String(name))) {
            if (const std::optional<T> result = read<T>(name, given, parse))
                results += *result;
        }
        return results;
    }

    int number(const char *name, int fallback, int min, int max)
    {
        return value<int>(name,
                          [=](const QString &given) -> std::optional<int> {
                              bool isNumber = false;
                              const int result = given.toInt(&isNumber);
                              if (!isNumber || result < min || result > max)
                                  return std::nullopt;
                              return result;
                          })
            .value_or(fallback);
    }

    void refuse(const QString &message)
    {
        if (m_error.isEmpty())
            m_error = QString(message).replace(QLatin1Char('\n'), QLatin1Char(' '));
    }
    QString error() const { return m_error; }

private:
    template<class T, class Parse>
    std::optional<T> read(const char *name, const QString &given, Parse parse)
    {
        const std::optional<T> result = parse(given);
        if (!result)
            refuse(tr("--%1 的值无效：%2").arg(QLatin1String(name), given));
        return result;
    }

    const QCommandLineParser &m_parser;
    QString m_error;
};

bool converts(Command command)
{
    return command == Command::Convert || command == Command::Gif || command == Command::Merge;
}

MediaFunction functionOf(Command command)
{
    if (command == Command::Gif)
        return MediaFunction::Gif;
    if (command == Command::Shots)
        return MediaFunction::Shot;
    if (command == Command::Record)
        return MediaFunction::Screencap;
    return command == Command::Merge ? MediaFunction::Merge : MediaFunction::Convert;
}

void readFiles(CommandLine &line, const QStringList &words, ValueReader &values)
{
    const bool takesFiles =
        line.command == Command::Probe || line.command == Command::Shots || converts(line.command);
    if (takesFiles && words.isEmpty())
        values.refuse(tr("没有给出文件"));
    if (!takesFiles && !words.isEmpty())
        values.refuse(tr("多余的参数：%1").arg(words.first()));
    for (const QString &word : words) {
        if (word.isEmpty())
            values.refuse(tr("文件名为空"));
        line.files += QDir::current().absoluteFilePath(word);
    }
}

void readCategory(CommandLine &line, ValueReader &values)
{
    if (!values.isSet("category"))
        return;
    line.category = values.text("category").toUpper();
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    for (const quint32 id : catalogue.categoryIds()) {
        if (catalogue.category(id)->title == line.category)
            return;
    }
    values.refuse(tr("未知的格式分类：%1").arg(values.text("category")));
}

std::optional<ProbeReader> parseReader(const QString &text)
{
    const QStringList words{QStringLiteral("auto"), QStringLiteral("ffprobe"),
                            QStringLiteral("mediainfo")};
    const int reader = words.indexOf(text);
    return reader >= 0 ? std::make_optional(ProbeReader(reader)) : std::nullopt;
}

void readPreset(CommandLine &line, ValueReader &values)
{
    if (!values.isSet("preset"))
        values.refuse(tr("没有给出预设：--preset ID"));
    line.presetId = values.text("preset").toUInt();
    if (!EncParamCatalog::instance().hasEncParam(line.presetId))
        values.refuse(tr("未知的预设：%1").arg(values.text("preset")));
}

void readOutputDir(CommandLine &line, ValueReader &values)
{
    line.outputDir = values.isSet("out") ? QDir::current().absoluteFilePath(values.text("out"))
                                         : defaultOutputDir(functionOf(line.command));
    if (values.isSet("out") && values.text("out").isEmpty())
        values.refuse(tr("输出目录为空"));
}

void readTarget(CommandLine &line, ValueReader &values)
{
    readOutputDir(line, values);
    line.strict = values.isSet("strict");
    line.name = values.text("name");
    const bool named = values.isSet("name");
    if (line.command == Command::Merge && !named)
        values.refuse(tr("没有给出合并结果的名称：--name BASE"));
    if (named && (line.name.isEmpty() || line.name.contains(QLatin1Char('/'))))
        values.refuse(tr("--name 的值无效：%1").arg(line.name));
}

void readDubbing(CommandLine &line, ValueReader &values)
{
    QVariantList musics;
    for (const QVariantMap &music : values.values<QVariantMap>("dub", parseDub))
        musics += music;
    const auto factor = values.value<float>("film-volume", parseFactor);
    const bool isMuted = values.isSet("mute-film");
    if (musics.isEmpty() && !factor && !isMuted)
        return;
    line.dubbing = {{QStringLiteral("filter"), QStringLiteral("dubbing")},
                    {QStringLiteral("musics"), musics},
                    {QStringLiteral("videoVolume"), factor.value_or(1.0F)},
                    {QStringLiteral("isMax"), !isMuted}};
}

// What is laid over the picture isn't to be removed.
void readMarks(CommandLine &line, ValueReader &values)
{
    for (const QVariantMap &removal : values.values<QVariantMap>("delogo", parseDelogo))
        line.marks += removal;
    for (const QVariantMap &mark : values.values<QVariantMap>("watermark", parseWatermark))
        line.marks += mark;
}

void readRun(CommandLine &line, ValueReader &values)
{
    constexpr int maxJobs = 64;
    line.fromMs = values.value<int>("from", parseTimeMs);
    line.toMs = values.value<int>("to", parseTimeMs);
    if (line.toMs && *line.toMs <= line.fromMs.value_or(0))
        values.refuse(tr("--to 必须晚于 --from"));
    line.jobs = values.number("jobs", 1, 1, maxJobs);
    line.dryRun = values.isSet("dry-run");
}

void readConversion(CommandLine &line, ValueReader &values)
{
    line.crop = values.value<CropBox>("crop", parseCropBox);
    line.beauty = values.value<VideoBeautyParam>("beauty", parseBeauty);
    readMarks(line, values);
    readDubbing(line, values);
    line.speed = values.number("speed", 0, 0, 9);
}

void readGif(CommandLine &line, ValueReader &values)
{
    // A GIF counts the time of a frame in hundredths of a second, and players slow one of them
    // down.
    constexpr int mostFrames = 50;
    line.gifSize = values.value<QSize>("size", parseGifSize).value_or(QSize());
    line.gifRate = values.number("fps", line.gifRate, 1, mostFrames);
    line.gifQuality = values.isSet("quality");
}

void readRecord(CommandLine &line, ValueReader &values)
{
    constexpr int longest = 24 * 60 * 60;
    RecordWish &wish = line.record;
    readOutputDir(line, values);
    wish.area = values.value<CropBox>("area", parseCropBox);
    wish.window = values.value<quint32>("window", parseWindow);
    if (wish.area && wish.window)
        values.refuse(tr("--area 和 --window 不能同时使用"));
    if (wish.area && (wish.area->width < 2 || wish.area->height < 2))
        values.refuse(tr("--area 的值无效：%1").arg(values.text("area")));
    wish.sound = values.value<int>("sound", parseSound).value_or(wish.sound);
    wish.seconds = values.number("seconds", 0, 1, longest);
}

void readShots(CommandLine &line, ValueReader &values)
{
    constexpr int mostColumns = 20;
    ShotWish &wish = line.shots;
    if (values.isSet("at") == values.isSet("every"))
        values.refuse(tr("请给出 --at T,T,… 或 --every S 之一"));
    wish.atMs = values.value<QVector<int>>("at", parseTimesMs).value_or(wish.atMs);
    wish.everyMs = values.value<int>("every", parseTimeMs).value_or(0);
    if (values.isSet("every") && wish.everyMs == 0)
        values.refuse(tr("--every 的值无效：%1").arg(values.text("every")));
    if (values.isSet("at") && (values.isSet("from") || values.isSet("to")))
        values.refuse(tr("--from 和 --to 只用于 --every"));
    wish.fromMs = values.value<int>("from", parseTimeMs).value_or(0);
    wish.toMs = values.value<int>("to", parseTimeMs);
    if (wish.toMs && *wish.toMs < wish.fromMs)
        values.refuse(tr("--to 必须晚于 --from"));
    wish.format = values.value<QString>("format", parsePictureFormat).value_or(wish.format);
    wish.scale = values.value<double>("scale", parseScale).value_or(wish.scale);
    wish.isLong = values.isSet("long");
    wish.columns = values.number("sheet", 0, 1, mostColumns);
    if (wish.isLong && values.isSet("sheet"))
        values.refuse(tr("--long 和 --sheet 不能同时使用"));
    readOutputDir(line, values);
}

void readOptions(CommandLine &line, ValueReader &values)
{
    if (line.command == Command::Presets)
        readCategory(line, values);
    if (line.command == Command::Probe)
        line.reader = values.value<ProbeReader>("reader", parseReader).value_or(line.reader);
    if (line.command == Command::Convert || line.command == Command::Merge)
        readPreset(line, values);
    if (converts(line.command))
        readTarget(line, values);
    if (line.command == Command::Convert || line.command == Command::Gif)
        readRun(line, values);
    if (line.command == Command::Convert)
        readConversion(line, values);
    if (line.command == Command::Gif)
        readGif(line, values);
    if (line.command == Command::Shots)
        readShots(line, values);
    if (line.command == Command::Record)
        readRecord(line, values);
}

} // namespace

std::optional<CommandLine> parseCommandLine(const QStringList &words, QString &error)
{
    const QString word = words.value(0);
    if (word.isEmpty() || word == QLatin1String("--help") || word == QLatin1String("-h"))
        return CommandLine();
    const auto *row = std::find_if(
        std::begin(commandRows), std::end(commandRows),
        [&word](const CommandRow &known) { return word == QLatin1String(known.word); });
    if (row == std::end(commandRows)) {
        error = tr("未知的命令：%1").arg(word);
        return std::nullopt;
    }

    QCommandLineParser parser;
    parser.addOptions(optionsOf(*row));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    parser.addOption(help);
    if (!parser.parse(words)) {
        const QStringList unknown = parser.unknownOptionNames();
        error = unknown.isEmpty() ? parser.errorText() : tr("未知的选项：%1").arg(unknown.first());
        return std::nullopt;
    }
    if (parser.isSet(help))
        return CommandLine();

    CommandLine line;
    line.command = row->command;
    line.json = parser.isSet(QStringLiteral("json"));
    ValueReader values(parser);
    readFiles(line, parser.positionalArguments(), values);
    readOptions(line, values);
    error = values.error();
    return error.isEmpty() ? std::make_optional(line) : std::nullopt;
}
