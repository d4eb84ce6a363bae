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
    char *const *leftovers;
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
            for (char *const *left = plan.leftovers; *left != nullptr; ++left)
                if (::unlink(*left) != 0)
                    ::rmdir(*left);
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

/// Texts as the system's calls want them: pointers with a null one after the last.
class Words
{
public:
    explicit Words(const QStringList &texts)
    {
        for (const QString &text : texts)
            m_words << QFile::encodeName(text);
        for (QByteArray &word : m_words)
            m_pointers.push_back(word.data());
        m_pointers.push_back(nullptr);
    }
    [[nodiscard]] char *const *pointers() const { return m_pointers.data(); }

private:
    QList<QByteArray> m_words;
    std::vector<char *> m_pointers;
};

} // namespace

qint64 StartKept(const QString &program, const QStringList &arguments, const QString &lockFile,
                 const QStringList &leftovers)
{
    Words words(QStringList(program) + arguments);
    Words remains(leftovers);
    const QByteArray lock = QFile::encodeName(lockFile);
    int answer[2];
    if (::pipe2(answer, O_CLOEXEC) != 0)
        return 0;
    // Twice, so that the keeper is no child of this program, which would have to await its end.
    const pid_t between = ::fork();
    if (between == 0) {
        if (::fork() == 0)
            becomeKeeper({lock.constData(), words.pointers(), remains.pointers(), answer[1]});
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
