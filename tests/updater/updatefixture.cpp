// SPDX-License-Identifier: MIT
#include "updater/updatefixture.h"

#include "support/testfile.h"

#include <QtTest>

#include <archive.h>
#include <archive_entry.h>

namespace {

constexpr int dataFiles = 200;

QString dataFile(const QString &folder, int number)
{
    return "%1/module/part%2/data%3"_s.arg(folder).arg(number % 7).arg(number);
}

void describe(archive_entry *form, const ArchiveEntry &entry)
{
    archive_entry_set_pathname(form, entry.path.constData());
    archive_entry_set_perm(form, mode_t(entry.mode));
    switch (entry.kind) {
    case 'h':
        archive_entry_set_filetype(form, AE_IFREG);
        archive_entry_set_hardlink(form, entry.content.constData());
        break;
    case 'l':
        archive_entry_set_filetype(form, AE_IFLNK);
        archive_entry_set_symlink(form, entry.content.constData());
        break;
    case 'd':
        archive_entry_set_filetype(form, AE_IFDIR);
        break;
    case 'c':
        archive_entry_set_filetype(form, AE_IFCHR);
        break;
    default:
        archive_entry_set_filetype(form, AE_IFREG);
        archive_entry_set_size(form, entry.content.size());
    }
}

} // namespace

QByteArray archiveOf(const QVector<ArchiveEntry> &entries)
{
    QByteArray bytes(1024 * 1024, '\0');
    size_t used = 0;
    archive *writer = archive_write_new();
    archive_write_set_format_pax_restricted(writer);
    archive_write_add_filter_zstd(writer);
    archive_write_open_memory(writer, bytes.data(), size_t(bytes.size()), &used);
    for (const ArchiveEntry &entry : entries) {
        archive_entry *form = archive_entry_new();
        describe(form, entry);
        archive_write_header(writer, form);
        if (entry.kind == 'f')
            archive_write_data(writer, entry.content.constData(), size_t(entry.content.size()));
        archive_entry_free(form);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    return bytes.left(int(used));
}

QByteArray packageOf(const QByteArray &archive, int version)
{
    const QTemporaryDir dir;
    const QByteArray header =
        "MORVANE-UPDATE-1\nversion " + QByteArray::number(version) + "\nsize " +
        QByteArray::number(archive.size()) + "\nsha512 " +
        QCryptographicHash::hash(archive, QCryptographicHash::Sha512).toHex() + "\n";
    writeTestFile(dir.filePath("header"_s), header);
    const ToolRun run =
        runTool("openssl"_s, {"pkeyutl"_s, "-sign"_s, "-rawin"_s, "-inkey"_s,
                              utf8(MORVANE_TEST_KEY_FILE), "-in"_s, dir.filePath("header"_s)});
    return header + "signature " + run.out.toBase64() + "\n\n" + archive;
}

ToolRun runPack(const QString &folder, int version, const QString &package)
{
    return runTool(utf8(MORVANE_SIGN_UPDATE), {"pack"_s, utf8(MORVANE_TEST_KEY_FILE),
                                               QString::number(version), folder, package});
}

void packFolder(const QString &folder, int version, const QString &package)
{
    const ToolRun run = runPack(folder, version, package);
    QVERIFY2(run.exitCode == 0, run.err.constData());
}

void makeInstallation(const QString &folder, const QByteArray &version,
                      const QByteArray &startsWith)
{
    writeTestProgram(folder + "/morvane"_s,
                     startsWith +
                         "\n[ \"$1\" != --preuninst ] || exit 0"
                         "\nprintf '" +
                         version +
                         "\\n' >>\"$(dirname \"$0\")/../ran\"\n"
                         "[ -z \"$MORVANE_UPDATE_UNFIT\" ] || : >\"$(dirname \"$0\")/../unfit\"\n"
                         "[ -z \"$MORVANE_UPDATE_FAILED\" ] ||"
                         " printf '%s\\n' \"$MORVANE_UPDATE_FAILED\" "
                         ">>\"$(dirname \"$0\")/../failed\"\n"
                         "rm -f \"$(dirname \"$0\")/.update-trial\"\n"
                         "[ -z \"$MORVANE_UPDATE_STARTED\" ] || : >\"$MORVANE_UPDATE_STARTED\"\n");
    writeTestProgram(folder + "/updater"_s, "# " + version);
    for (int number = 0; number < dataFiles; ++number)
        writeTestFile(dataFile(folder, number), version + QByteArray(5000, '.'));
}

QByteArray versionOf(const QString &folder)
{
    QSet<QByteArray> versions;
    for (int number = 0; number < dataFiles; ++number)
        versions.insert(contentOf(dataFile(folder, number)));
    const QByteArray version = contentOf(dataFile(folder, 0)).split('.').first();
    versions.remove(version + QByteArray(5000, '.'));
    const bool fits = contentOf(folder + "/morvane"_s).contains("'" + version + "\\n'") &&
                      contentOf(folder + "/updater"_s).contains("# " + version);
    return versions.isEmpty() && fits ? version : QByteArray();
}
