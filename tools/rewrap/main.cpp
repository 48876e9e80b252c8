// SPDX-License-Identifier: MIT
#include "platform/utf8locale.h"
#include "rewrap/rewrap.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    ensureUtf8Locale();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto order = arguments.size() == 2 ? readOrder(arguments[1].toLatin1(), REWRAP_FIELDS)
                                             : std::optional<RewrapOrder>();
    if (!order) {
        std::fputs("参数无法解读\n", stderr);
        return 2;
    }
    return rewrap(*order);
}
