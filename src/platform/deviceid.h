// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Where the id of this computer can be read, in the order in which the places are tried.
struct DeviceIdSources
{
    /// File of 32 hexadecimal digits.
    QString machineId;
    /// File with the mainboard's UUID.
    QString productUuid;
    /// Folder with one folder a disk; a disk's serial number is in "device/serial" there.
    QString disks;
    /// File with a UUID of this user, written when nothing else tells the computer apart.
    QString storedUuid;

    /// Those of this system.
    static DeviceIdSources ofSystem();
};

/// A prefix for the source ("MA-", "CS-", "HD-" or "CC-") and a value. What the system tells about
/// the computer is only given hashed; a stored UUID is given as it is, and one that had to be made
/// by this call comes without a prefix.
QString readDeviceId(const DeviceIdSources &sources);
