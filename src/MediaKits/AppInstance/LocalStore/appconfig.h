// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What the installer or the user wrote into main.ini, read once. All values are empty in a file
/// that is missing, but for `store` and `lock`.
struct AppConfig
{
    /// @param iniPath path of main.ini
    explicit AppConfig(const QString &iniPath);

    /// The one beside the program.
    static const AppConfig &instance();

    /// Distribution channel; taken from the installer's name when the file states none.
    QString store;
    /// Name of the single-instance lock.
    QString lock;
    /// Base name of the installer that was run, otherwise of the package.
    QString installer;
    /// Base name of the package that was downloaded.
    QString package;
    QString oaid;
    QString pointCode;
    QString om;
    QString qhclickid;

    // Addresses of the online services, as "https://host" or "https://host:port"; a service
    // whose address is empty is never asked.

    /// Batches of usage events.
    QString serviceCollector;
    /// Named usage events.
    QString serviceEvents;
    /// Conversion marks of the channel "360".
    QString serviceMarketing;
    QString serviceUpdate;
    /// "off" leaves the certificate of the update service unchecked; anything else doesn't.
    QString serviceUpdateVerify;
    QString serviceConfiguration;
    /// "off" leaves the certificate of that service unchecked; anything else doesn't.
    QString serviceConfigurationVerify;
    /// Hosts of login pages whose certificate is left unchecked, separated by commas.
    QString serviceLoginUnchecked;
    QString serviceUser;
    /// 32 hexadecimal characters that the service of named events knows this program by.
    QString serviceAppKey;

    // Where users reach the maker of the program; what is empty isn't offered.

    /// Address of the web site.
    QString contactSite;
    /// Number of the service account for chats.
    QString contactNumber;
    QString contactPhone;
    /// File with the picture of a code that a chat program scans; a relative path is one beside
    /// the program.
    QString contactPicture;
};
