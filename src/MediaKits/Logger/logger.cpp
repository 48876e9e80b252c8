// SPDX-License-Identifier: MIT
#include "MediaKits/Logger/logger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

INITIALIZE_EASYLOGGINGPP

namespace {

// Before the program has chosen its log, or when it has none, lines are dropped.
void silence()
{
    el::Configurations quiet;
    quiet.setGlobally(el::ConfigurationType::Enabled, "false");
    quiet.setGlobally(el::ConfigurationType::ToStandardOutput, "false");
    quiet.setGlobally(el::ConfigurationType::ToFile, "false");
    el::Loggers::reconfigureAllLoggers(quiet);
}

const bool startsSilent = [] {
    silence();
    return true;
}();

// A link would lead elsewhere, and a pipe be waited for.
bool isUsable(const QString &logFile)
{
    const QFileInfo info(logFile);
    return !info.isSymLink() && (!info.exists() || info.isFile());
}

} // namespace

QString Logger::configText(const QString &text, const QString &logDir)
{
    QString native = QDir::toNativeSeparators(logDir);
    native.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    return QString(text).replace(QLatin1String("%logpath"), native);
}

void Logger::init(const QString &configFile, const QString &logDir)
{
    QFile configurationFile(configFile);
    if (!startsSilent || !configurationFile.open(QIODevice::ReadOnly | QIODevice::Text))
        return;

    el::Configurations configuration;
    const QString text = configText(QString::fromUtf8(configurationFile.readAll()), logDir);
    if (!configuration.parseFromText(text.toStdString()))
        return;
    const el::Configuration *file =
        configuration.get(el::Level::Global, el::ConfigurationType::Filename);
    const QString logFile = file ? QString::fromStdString(file->value()) : QString();
    if (!isUsable(logFile)) {
        std::fprintf(stderr, "日志文件不是普通文件，已拒绝写入：%s\n", qUtf8Printable(logFile));
        return;
    }
    el::Loggers::addFlag(el::LoggingFlag::DisableApplicationAbortOnFatalLog);
    el::Loggers::reconfigureLogger("default", configuration);
    CLOG(INFO, "default") << QStringLiteral("####启动####");
}
