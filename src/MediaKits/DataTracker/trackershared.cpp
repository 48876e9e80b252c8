// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/trackershared.h"

#include "http/httptaskmanager.h"

std::string serviceUrl(const QString &host, const char *path)
{
    QString base = host;
    while (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    if (!base.contains(QLatin1String("://")))
        base.prepend(QLatin1String("https://"));
    return (base + QLatin1String(path)).toStdString();
}

std::unique_ptr<HttpTaskManager> makeHttpWorker(const QString &host, const char *name)
{
    return host.isEmpty() ? nullptr : std::make_unique<HttpTaskManager>(name);
}
