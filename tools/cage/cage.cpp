// SPDX-License-Identifier: MIT
#include "cage/cage.h"

#include "cage/installedtool.h"

#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include <elf.h>
#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cage {

namespace {

constexpr uint64_t fileRights = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE;
constexpr uint64_t readRights = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr uint64_t writeRights = readRights | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                 LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG;
// The rights of the first Landlock (Linux 5.13). Later ones came one by one.
constexpr uint64_t firstRights = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1;

#ifdef LANDLOCK_ACCESS_FS_TRUNCATE
constexpr uint64_t truncateRight = LANDLOCK_ACCESS_FS_TRUNCATE;
#else
constexpr uint64_t truncateRight = uint64_t(1) << 14;
#endif
constexpr int truncateSince = 3;

const char *const systemPlaces[] = {
    "/usr",      "/lib",      "/lib64",      "/etc",
    "/proc",     "/sys",      "/opt",        "/var/cache/fontconfig",
    "/dev/null", "/dev/zero", "/dev/random", "/dev/urandom"};

// A variable that holds a folder, or where that folder is without it.
std::string folderOf(const char *variable, const char *belowHome)
{
    const std::string set = environmentText(variable);
    const std::string home = environmentText("HOME");
    return !set.empty() || home.empty() ? set : home + belowHome;
}

std::vector<std::string> fontPlaces()
{
    return {environmentText("HOME") + "/.fonts",
            folderOf("XDG_DATA_HOME", "/.local/share") + "/fonts",
            folderOf("XDG_CONFIG_HOME", "/.config") + "/fontconfig",
            folderOf("XDG_CACHE_HOME", "/.cache") + "/fontconfig",
            environmentText("FONTCONFIG_PATH"),
            environmentText("FONTCONFIG_FILE")};
}

// What the user puts in front of the system's libraries, and where they are looked for.
std::vector<std::string> libraryPlaces()
{
    std::vector<std::string> places;
    std::istringstream words(environmentText("LD_PRELOAD") + ":" +
                             environmentText("LD_LIBRARY_PATH"));
    for (std::string place; std::getline(words, place, ':');)
        places.push_back(place);
    return places;
}

class Ruleset
{
public:
    explicit Ruleset(int version)
        : m_rights(firstRights | (version >= truncateSince ? truncateRight : 0))
    {
        landlock_ruleset_attr attributes{};
        attributes.handled_access_fs = m_rights;
        m_ruleset = int(syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0));
    }
    ~Ruleset()
    {
        if (m_ruleset >= 0)
            close(m_ruleset);
    }
    Ruleset(const Ruleset &) = delete;
    Ruleset &operator=(const Ruleset &) = delete;

    void allow(const std::string &path, uint64_t rights)
    {
        const int place = open(path.c_str(), O_PATH | O_CLOEXEC);
        struct stat facts
        {
        };
        if (place < 0)
            return;
        // Rights over folders can't be given to a file.
        if (fstat(place, &facts) == 0 && !S_ISDIR(facts.st_mode))
            rights &= fileRights | LANDLOCK_ACCESS_FS_EXECUTE | truncateRight;
        landlock_path_beneath_attr rule{};
        rule.allowed_access = rights & m_rights;
        rule.parent_fd = place;
        syscall(SYS_landlock_add_rule, m_ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
        close(place);
    }

    bool enforce() const
    {
        return m_ruleset >= 0 && syscall(SYS_landlock_restrict_self, m_ruleset, 0) == 0;
    }

private:
    const uint64_t m_rights;
    int m_ruleset = -1;
};

// The dynamic loader that the program names, which is started with it.
std::string loaderOf(const std::string &program)
{
    const int file = open(program.c_str(), O_RDONLY | O_CLOEXEC);
    std::string loader;
    Elf64_Ehdr header{};
    if (file >= 0 && pread(file, &header, sizeof header, 0) == ssize_t(sizeof header) &&
        header.e_ident[EI_CLASS] == ELFCLASS64) {
        for (int i = 0; i < header.e_phnum && loader.empty(); ++i) {
            Elf64_Phdr part{};
            const auto place = off_t(header.e_phoff + size_t(i) * header.e_phentsize);
            if (pread(file, &part, sizeof part, place) != ssize_t(sizeof part))
                break;
            if (part.p_type != PT_INTERP || part.p_filesz > 4096)
                continue;
            loader.resize(part.p_filesz);
            if (pread(file, loader.data(), loader.size(), off_t(part.p_offset)) < 0)
                loader.clear();
            loader.resize(loader.find('\0') == std::string::npos ? 0 : loader.find('\0'));
        }
    }
    if (file >= 0)
        close(file);
    return loader;
}

bool confineFiles(const Needs &needs)
{
    const long version =
        syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return false;
    Ruleset rules{int(version)};
    for (const char *place : systemPlaces)
        rules.allow(place, readRights);
    rules.allow("/dev/null", fileRights | truncateRight);
    for (const auto &places : {fontPlaces(), libraryPlaces()}) {
        for (const std::string &place : places)
            rules.allow(place, readRights);
    }
    for (const std::string &path : needs.readable)
        rules.allow(path, readRights);
    for (const std::string &path : needs.writable)
        rules.allow(path, writeRights | truncateRight);
    if (needs.program.empty())
        return rules.enforce();
    const std::string loader = loaderOf(needs.program);
    if (loader.empty()) {
        // No program of this machine's usual kind, as a script is none: it may start what it likes.
        rules.allow("/", LANDLOCK_ACCESS_FS_EXECUTE);
    } else {
        rules.allow(needs.program, LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_READ_FILE);
        rules.allow(loader, LANDLOCK_ACCESS_FS_EXECUTE);
    }
    return rules.enforce();
}

#if defined(__x86_64__)
constexpr uint32_t machine = AUDIT_ARCH_X86_64;
constexpr uint32_t otherCalls = 0x40000000; // from here on, those of the x32 interface
#elif defined(__aarch64__)
constexpr uint32_t machine = AUDIT_ARCH_AARCH64;
constexpr uint32_t otherCalls = 0xffffffff;
#else
constexpr uint32_t machine = 0;
constexpr uint32_t otherCalls = 0;
#endif

constexpr sock_filter load(uint32_t offset)
{
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset);
}

constexpr sock_filter refuse(uint32_t error)
{
    return BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error);
}

constexpr sock_filter pass()
{
    return BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW);
}

// Skips the next step unless the loaded word is `value`.
constexpr sock_filter onlyIf(uint32_t value)
{
    return BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, 0, 1);
}

bool confineCalls(const Needs &needs)
{
    if (machine == 0)
        return false;
    std::vector<sock_filter> steps{
        load(offsetof(seccomp_data, arch)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, machine, 1, 0),
        refuse(EPERM),
        load(offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, otherCalls, 0, 1),
        refuse(ENOSYS),
        // It can do what is refused below behind the filter's back.
        onlyIf(SYS_io_uring_setup),
        refuse(ENOSYS),
        onlyIf(SYS_ptrace),
        refuse(EPERM),
        onlyIf(SYS_process_vm_readv),
        refuse(EPERM),
        onlyIf(SYS_process_vm_writev),
        refuse(EPERM),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 1, 0),
        pass(),
        // The kernel's own word is 64 bits wide; a family fits into the lower ones.
        load(offsetof(seccomp_data, args)),
    };
    if (needs.localSockets) {
        steps.push_back(onlyIf(AF_UNIX));
        steps.push_back(pass());
        steps.push_back(onlyIf(AF_NETLINK)); // lists of devices, which the display's drivers read
        steps.push_back(pass());
    }
    steps.push_back(refuse(EACCES));
    const sock_fprog program{static_cast<unsigned short>(steps.size()), steps.data()};
    return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

// One from elsewhere has its libraries anywhere.
bool isOfSystem(const std::string &program)
{
    if (program.empty())
        return true;
    std::string path(PATH_MAX, '\0');
    if (realpath(program.c_str(), path.data()) == nullptr)
        return false;
    return path.compare(0, 5, "/usr/") == 0 || path.compare(0, 5, "/bin/") == 0;
}

} // namespace

std::string confine(const Needs &needs)
{
    // What is started may not gain rights either, which the kernel asks for.
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return "this system confines no tools";
    std::string missing;
    if (!needs.anyFile && isOfSystem(needs.program) && !confineFiles(needs))
        missing = "this system doesn't confine a tool's files";
    if (!confineCalls(needs))
        missing += (missing.empty() ? "" : ", ") + std::string("nor its network");
    return missing;
}

} // namespace cage
