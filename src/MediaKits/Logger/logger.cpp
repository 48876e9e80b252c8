// SPDX-License-Identifier: MIT
#include "MediaKits/Logger/logger.h"

#include <QDir>
#include <QFile>

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

} // namespace

QString Logger::configText(const QString &text, const QString &logDir)
{
    QString native = QDir::toNativeSeparators(logDir);
    native.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    return QString(text).replace(QLatin1String("%logpath"), native);
}

void Logger::init(const QString &configFile, const QString &logDir)
{
    QFile file(configFile);
    if (!startsSilent || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;

    el::Configurations configuration;
    const QString text = configText(QString::fromUtf8(file.readAll()), logDir);
    if (!configuration.parseFromText(text.toStdString()))
        return;
    el::Loggers::addFlag(el::LoggingFlag::DisableApplicationAbortOnFatalLog);
    el::Loggers::reconfigureLogger("default", configuration);
    CLOG(INFO, "default") << QStringLiteral("####启动####");
}
