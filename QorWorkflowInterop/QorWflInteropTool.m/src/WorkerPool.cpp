#include "WorkerPool.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

bool WriteAll(int iDescriptor, std::string_view iBytes) {
    while (!iBytes.empty()) {
        const ssize_t count = ::write(iDescriptor, iBytes.data(), iBytes.size());
        if (count >= 0) {
            iBytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool ReadAll(int iDescriptor, char* oBytes, std::size_t iSize) {
    while (iSize > 0) {
        const ssize_t count = ::read(iDescriptor, oBytes, iSize);
        if (count > 0) {
            oBytes += count;
            iSize -= static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

template <typename Number>
std::string Bytes(Number iNumber) {
    std::string bytes(sizeof iNumber, '\0');
    std::memcpy(bytes.data(), &iNumber, sizeof iNumber);
    return bytes;
}

// A result between two processes: the length of the rest; whether all went well; the messages, each ended by a NUL.

std::string Packed(const TaskResult& iResult) {
    std::string rest(1, iResult.isDone ? '\1' : '\0');
    for (const std::string& message : iResult.messages) {
        rest.append(message, 0, message.find('\0'));  // a NUL in it would end it
        rest += '\0';
    }
    return Bytes(static_cast<std::uint64_t>(rest.size())) + rest;
}

TaskResult Unpacked(std::string_view iRest) {
    TaskResult result;
    result.isDone = iRest.front() == '\1';
    iRest.remove_prefix(1);
    while (!iRest.empty()) {
        const std::size_t end = std::min(iRest.find('\0'), iRest.size() - 1);
        result.messages.emplace_back(iRest.substr(0, end));
        iRest.remove_prefix(end + 1);
    }
    return result;
}

/** A process that does tasks, seen from the one that gives them. */
class Worker {
public:
    Worker(pid_t iProcess, int iTasks, int iResults) : process(iProcess), tasks(iTasks), results(iResults) {}
    /** Tells the process that there is no more to do, and waits for its end. */
    ~Worker() {
        Close();
        if (process > 0) {
            Reap();
        }
    }
    Worker(const Worker&) = delete;  // closes its ends once
    Worker& operator=(const Worker&) = delete;

    void Give(std::size_t iTask) {
        task = iTask;
        WriteAll(tasks, Bytes(iTask));  // a process that is dead shows when its result is read
    }
    std::size_t Task() const { return task; }
    int Results() const { return results; }

    /** Takes what has come; gives a result when it is whole. False when the process has died. */
    bool Take(std::optional<TaskResult>& oResult) {
        char buffer[4096];
        const ssize_t count = ::read(results, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) {
            return true;
        }
        if (count <= 0) {
            return false;
        }
        received.append(buffer, static_cast<std::size_t>(count));
        std::uint64_t length = 0;
        if (received.size() >= sizeof length) {
            std::memcpy(&length, received.data(), sizeof length);
            if (received.size() - sizeof length == length) {
                oResult = Unpacked(std::string_view(received).substr(sizeof length));
                received.clear();
            }
        }
        return true;
    }

    /** How the process died, in words. */
    std::string HowItDied() {
        const int status = Reap();
        return WIFSIGNALED(status) ? std::string("died of signal ") + std::to_string(WTERMSIG(status)) + " (" +
                                         ::strsignal(WTERMSIG(status)) + ")"
                                   : "ended with status " + std::to_string(WEXITSTATUS(status));
    }

    /** Gives up the ends of the pipes; also in another process, a copy of this one. */
    void Close() {
        if (tasks >= 0) {
            ::close(tasks);
            ::close(results);
            tasks = -1;
        }
    }

private:
    int Reap() {
        int status = 0;
        while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        process = -1;
        return status;
    }

    pid_t process;
    int tasks;
    int results;
    std::size_t task = 0;
    std::string received;
};

/** The life of a worker, in its own process: a task comes, its result goes, until no more come. */
[[noreturn]] void Work(int iTasks, int iResults, const std::function<TaskResult(std::size_t)>& iTask) {
    std::size_t task = 0;
    while (ReadAll(iTasks, reinterpret_cast<char*>(&task), sizeof task) && WriteAll(iResults, Packed(iTask(task)))) {
    }
    std::exit(0);
}

/** Gives tasks to processes and takes their results. */
class Pool {
public:
    Pool(std::size_t iCount, const std::function<TaskResult(std::size_t)>& iTask,
         const std::function<void(std::size_t, TaskResult)>& iFinished)
        : count(iCount), doTask(iTask), finished(iFinished) {}

    void Run(int iProcesses) {
        while (next < count || !workers.empty()) {
            while (next < count && workers.size() < static_cast<std::size_t>(iProcesses) && AddWorker()) {
                workers.back()->Give(next++);
            }
            if (workers.empty()) {
                return GiveUp(std::strerror(errno));
            }
            TakeResults();
        }
    }

private:
    /** Starts a process; false, with errno set, when there is none to be had. */
    bool AddWorker() {
        int tasks[2];
        int results[2];
        if (::pipe(tasks) != 0) {
            return false;
        }
        if (::pipe(results) != 0) {
            return Abandon(tasks);
        }
        std::fflush(nullptr);  // or both processes would write what is still in the buffer
        const pid_t process = ::fork();
        if (process < 0) {
            Abandon(tasks);
            return Abandon(results);
        }
        if (process == 0) {
            ::close(tasks[1]);
            ::close(results[0]);
            for (const auto& other : workers) {  // whose end would not be seen while this process holds a copy
                other->Close();
            }
            Work(tasks[0], results[1], doTask);
        }
        ::close(tasks[0]);
        ::close(results[1]);
        workers.push_back(std::make_unique<Worker>(process, tasks[1], results[0]));
        return true;
    }

    /** Closes a pipe that is not needed after all, errno staying as it is; false. */
    static bool Abandon(const int (&iPipe)[2]) {
        const int reason = errno;
        ::close(iPipe[0]);
        ::close(iPipe[1]);
        errno = reason;
        return false;
    }

    /** Waits until at least one process has something to tell, and hears all that have. */
    void TakeResults() {
        std::vector<pollfd> entries;
        for (const auto& worker : workers) {
            entries.push_back({worker->Results(), POLLIN, 0});
        }
        while (::poll(entries.data(), entries.size(), -1) < 0 && errno == EINTR) {
        }
        for (std::size_t i = entries.size(); i-- > 0;) {  // backwards, for some may go
            if (entries[i].revents != 0 && !TakeResult(*workers[i])) {
                workers.erase(workers.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
    }

    /** Hears what a process has to tell, and gives it more to do; false when it is dead or there is no more. */
    bool TakeResult(Worker& ioWorker) {
        const std::size_t task = ioWorker.Task();
        std::optional<TaskResult> result;
        if (!ioWorker.Take(result)) {
            finished(task, {false, {}, "the process that worked on it " + ioWorker.HowItDied()});
            return false;
        }
        if (!result) {
            return true;
        }
        finished(task, std::move(*result));
        if (next == count) {
            return false;
        }
        ioWorker.Give(next++);
        return true;
    }

    void GiveUp(const std::string& iReason) {
        for (; next < count; ++next) {
            finished(next, {false, {}, "no process can be started: " + iReason});
        }
    }

    const std::size_t count;
    const std::function<TaskResult(std::size_t)>& doTask;
    const std::function<void(std::size_t, TaskResult)>& finished;
    std::vector<std::unique_ptr<Worker>> workers;  // each with a task
    std::size_t next = 0;                          // the first task that nobody has
};

}  // namespace

void RunTasks(std::size_t iCount, int iProcesses, const std::function<TaskResult(std::size_t)>& iTask,
              const std::function<void(std::size_t, TaskResult)>& iFinished) {
    Pool(iCount, iTask, iFinished).Run(iProcesses);
}
