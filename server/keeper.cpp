#include "server/keeper.h"

#include <QFile>
#include <QList>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

// After the fork nothing but system calls: the program may have had other threads, whose locks nobody gives back.
namespace {

struct Plan
{
    const char *lockFile;
    char *const *arguments;
    int answer; // pipe that takes the server's process number
};

void closeAllBut(int kept)
{
    const auto most = static_cast<int>(sysconf(_SC_OPEN_MAX));
    constexpr int usual = 4096; // some systems name a limit of a thousand million
    for (int file = 0; file < (most > usual ? usual : most); ++file) {
        if (file != kept)
            ::close(file);
    }
    for (const int flags : {O_RDONLY, O_WRONLY, O_WRONLY})
        ::open("/dev/null", flags);
}

[[noreturn]] void becomeServer(const Plan &plan)
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    ::execv(plan.arguments[0], plan.arguments);
    ::_exit(1);
}

constexpr useconds_t pollUs = 200'000;

/// Ends the server in order. One that hangs on its way down would keep the next program out for good: it is killed, which
/// costs no committed row.
void endServer(pid_t server)
{
    constexpr int patience = 300; // a minute
    ::kill(server, SIGTERM);
    for (int waited = 0; ::waitpid(server, nullptr, WNOHANG) == 0; ++waited) {
        if (waited == patience)
            ::kill(server, SIGKILL);
        ::usleep(pollUs);
    }
}

/// Waits for the end of the server, or for the last program to let go of the lock file; the server then ends first.
[[noreturn]] void keep(const Plan &plan, pid_t server)
{
    const int lock = ::open(plan.lockFile, O_RDWR | O_CLOEXEC);
    while (::waitpid(server, nullptr, WNOHANG) == 0) {
        if (lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) == 0) {
            endServer(server);
            break;
        }
        ::usleep(pollUs);
    }
    ::_exit(0);
}

[[noreturn]] void becomeKeeper(const Plan &plan)
{
    ::setsid();
    ::prctl(PR_SET_NAME, "pelkfbt-keeper");
    for (const int ended : {SIGINT, SIGTERM, SIGHUP, SIGCHLD})
        std::signal(ended, SIG_DFL);
    closeAllBut(plan.answer);
    const pid_t server = ::fork();
    if (server == 0)
        becomeServer(plan);
    const qint64 number = server;
    if (server < 0 || ::write(plan.answer, &number, sizeof number) != sizeof number)
        ::_exit(1);
    ::close(plan.answer);
    keep(plan, server);
}

} // namespace

qint64 StartKept(const QString &program, const QStringList &arguments, const QString &lockFile)
{
    QList<QByteArray> words{QFile::encodeName(program)};
    for (const QString &argument : arguments)
        words << argument.toLocal8Bit();
    std::vector<char *> pointers;
    for (QByteArray &word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const QByteArray lock = QFile::encodeName(lockFile);
    int answer[2];
    if (::pipe2(answer, O_CLOEXEC) != 0)
        return 0;
    // Twice, so that the keeper is no child of this program, which would have to await its end.
    const pid_t between = ::fork();
    if (between == 0) {
        if (::fork() == 0)
            becomeKeeper({lock.constData(), pointers.data(), answer[1]});
        ::_exit(0);
    }
    ::close(answer[1]);
    qint64 server = 0;
    if (between < 0 || ::read(answer[0], &server, sizeof server) != sizeof server)
        server = 0;
    ::close(answer[0]);
    if (between > 0)
        ::waitpid(between, nullptr, 0);
    return server;
}
