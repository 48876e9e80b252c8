// SPDX-License-Identifier: MIT
#include "cli/output.h"

#include <QJsonObject>

#include <cstdio>

namespace {

bool outputLost = false;

void writeResult(const QByteArray &bytes)
{
    const size_t size = size_t(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
        outputLost = true;
}

} // namespace

bool allPrinted()
{
    return !outputLost;
}

void printLine(const QString &text)
{
    writeResult(text.toUtf8() + '\n');
}

void printJson(const QJsonDocument &document)
{
    writeResult(document.toJson(QJsonDocument::Indented));
}

void printJsonLine(const QJsonObject &object)
{
    writeResult(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

void printMessage(const QString &text)
{
    QString line = text;
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
    }
    std::fprintf(stderr, "morvane-cli: %s\n", line.toUtf8().constData());
}
