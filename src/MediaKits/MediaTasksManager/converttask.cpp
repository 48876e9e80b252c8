// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/converttask.h"

#include "catalogue/encparamcatalog.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaTasksManager/convertgraph.h"

#include <QDir>

#include <cmath>

namespace {

// The encoder's "-preset" by speed index; index 0 gives no option.
const char *const speedNames[] = {nullptr, "ultrafast", "superfast", "veryfast", "faster",
                                  "fast",  "medium",    "slow",      "slower",   "veryslow"};

// Packets that ffmpeg may hold back until every stream has begun: long silent or dark openings
// need far more than its own default.
const QString muxingQueueSize = QStringLiteral("34500");

class OptionList
{
public:
    void add(const char *name, const QVariant &value = {})
    {
        m_options.append(FFmpegExTask::option(QLatin1String(name), value));
    }
    void addIfText(const char *name, const QString &value)
    {
        if (!value.isEmpty())
            add(name, value);
    }
    void addIfPositive(const char *name, int value, const char *unit = "")
    {
        if (value > 0)
            add(name, QString::number(value) + QLatin1String(unit));
    }
    QVariantList list() const { return m_options; }

private:
    QVariantList m_options;
};

QString seconds(int ms)
{
    return QString::number(ms / 1000.0, 'g', 6);
}

QVariantList inputOptions(const ConvertTaskParam &param)
{
    OptionList options;
    if (param.timeRange && param.timeRange->end > 0) {
        const TimeSpan &span = *param.timeRange;
        if (span.start > 0)
            options.add("-ss", seconds(span.start));
        options.add("-t", seconds(span.end - span.start + 1));
    }
    return options.list();
}

void addVideoOptions(OptionList &options, const VEncParam &video)
{
    options.addIfText("-c:v", EncParamCatalog::instance().encoderOf(video.fourCC));
    if (video.width > 0 && video.height > 0) {
        options.add("-s",
                    QStringLiteral("%1x%2").arg(video.width / 2 * 2).arg(video.height / 2 * 2));
    }
    options.addIfPositive("-b:v", video.bitrate, "k");
    for (int i = 0; i + 1 < video.rateOptions.size(); i += 2)
        options.add(video.rateOptions.at(i).toLatin1().constData(), video.rateOptions.at(i + 1));
    if (std::abs(video.frameRate) > 1e-12)
        options.add("-r", QString::number(video.frameRate, 'g', 6));
}

void addAudioOptions(OptionList &options, const AEncParam &audio, const QString &format)
{
    // Ring tones are MP4 files under a suffix that ffmpeg knows no container for.
    if (format.compare(QLatin1String("m4r"), Qt::CaseInsensitive) == 0) {
        options.add("-f", QStringLiteral("mp4"));
    } else {
        options.addIfText("-c:a", EncParamCatalog::instance().encoderOf(audio.fourCC));
        options.addIfPositive("-ac", audio.channel);
    }
    options.addIfPositive("-ar", audio.sampleRate);
    options.addIfPositive("-b:a", audio.bitrate, "k");
}

// The last picture of the graph stays; passed on as they come, none is missed.
void addPaletteOptions(OptionList &options)
{
    options.add("-c:v", QStringLiteral("png"));
    options.add("-s", QStringLiteral("16x16"));
    options.add("-vsync", QStringLiteral("0"));
    options.add("-update", QStringLiteral("1"));
}

void addPresetOptions(OptionList &options, const ConvertTaskParam &param)
{
    if (param.encParam && param.encParam->video)
        addVideoOptions(options, *param.encParam->video);
    if (param.encParam && param.encParam->audio)
        addAudioOptions(options, *param.encParam->audio, param.format);
}

// Only the streams of different graphs can end one another.
void addGraphs(OptionList &options, const ConvertTaskParam &param)
{
    const QStringList graphs =
        param.endsWithPicture
            ? QStringList{audioGraphText(param, ConvertTask::outputDuration(param)),
                          videoGraphText(param)}
            : QStringList{ConvertTask::buildFilterText(param)};
    for (const QString &graph : graphs) {
        if (!graph.isEmpty())
            options.add("-filter_complex", QLatin1Char('"') + graph + QLatin1Char('"'));
    }
}

QVariantList outputOptions(const ConvertTaskParam &param)
{
    OptionList options;
    if (param.palette == GifPalette::Chosen)
        addPaletteOptions(options);
    else
        addPresetOptions(options, param);
    addGraphs(options, param);
    if (param.speed > 0 && param.speed < int(std::size(speedNames)))
        options.add("-preset", QString(QLatin1String(speedNames[param.speed])));
    if (isAudioFormat(param.format))
        options.add("-vn");
    if (param.endsWithPicture)
        options.add("-shortest");
    options.add("-max_muxing_queue_size", muxingQueueSize);
    return options.list();
}

} // namespace

void ConvertTask::prepare()
{
    QVariantMap tree = buildOptionTree(*m_param);
    tree.insert(QStringLiteral("duration"), outputDuration(*m_param));
    setBaseParam(new FFmpegExTaskParam(tree));
    FFmpegExTask::prepare();
    tellSource(m_param->sourceInfo, m_cover);
}

void ConvertTask::start()
{
    m_cover = SourceCover::Usual;
    ParamTask::start();
}

// When nothing has come of a song with a cover, it may be the cover alone that can't be decoded.
bool ConvertTask::goesOn(bool endedWell)
{
    const MediaInfoData *source = m_param->sourceInfo.data();
    const bool showsCover =
        source && source->hasCover && !source->video && m_param->picture == ResultPicture::AsSource;
    if (endedWell || !showsCover || m_cover == SourceCover::Lost || account().writtenMs > 0)
        return false;
    m_cover = SourceCover::Lost;
    return true;
}

FFmpegAccount ConvertTask::account() const
{
    FFmpegAccount account = FFmpegExTask::account();
    account.coverLost = account.coverLost || m_cover == SourceCover::Lost;
    return account;
}

QString ConvertTask::buildFilterText(const ConvertTaskParam &param)
{
    QStringList graphs{videoGraphText(param), audioGraphText(param, outputDuration(param))};
    graphs.removeAll(QString());
    return graphs.join(QLatin1Char(';'));
}

QVariantMap ConvertTask::buildOptionTree(const ConvertTaskParam &param)
{
    const QVariantMap input{
        {QStringLiteral("inputUrl"), QDir::toNativeSeparators(param.inputFile)},
        {QStringLiteral("options"), inputOptions(param)},
    };
    const QDir dir(param.outputDir.isEmpty() ? QStringLiteral(".") : param.outputDir);
    const QVariantMap output{
        {QStringLiteral("options"), outputOptions(param)},
        {QStringLiteral("outputUrl"),
         dir.absoluteFilePath(param.outputName + QLatin1Char('.') + param.format)},
    };
    OptionList global;
    global.add("-hide_banner");
    global.add("-y");
    return {
        {QStringLiteral("options"), global.list()},
        {QStringLiteral("input"), QVariantMap{{QStringLiteral("inputs"), QVariantList{input}}}},
        {QStringLiteral("output"), output},
    };
}

int ConvertTask::outputDuration(const ConvertTaskParam &param)
{
    return param.timeRange ? param.timeRange->end - param.timeRange->start : param.durationMs;
}
