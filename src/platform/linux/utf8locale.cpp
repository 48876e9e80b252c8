// SPDX-License-Identifier: MIT
#include "platform/utf8locale.h"

#include <QByteArray>

#include <clocale>

#include <langinfo.h>

void ensureUtf8Locale()
{
    std::setlocale(LC_ALL, "");
    if (qstrcmp(::nl_langinfo(CODESET), "UTF-8") == 0)
        return;
    qputenv("LC_ALL", "C.UTF-8");
    std::setlocale(LC_ALL, "");
}
