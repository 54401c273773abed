#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace VexmoraSDK {

/// A program that runs, with what it prints. Ends with the process that runs it.
class Program {
 public:
    explicit Program(std::vector<std::string> command) {
        std::vector<char*> arguments;
        for (std::string& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        id_ = fork();
        if (id_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            execvp(arguments[0], arguments.data());
            _exit(127);
        }
        close(ends[1]);
        output_ = ends[0];
    }

    ~Program() {
        if (id_ > 0) end();
        close(output_);
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// What comes up to the end of the line that contains `wanted`, or of all there is.
    std::string readTo(const std::string& wanted) {
        for (;;) {
            const std::size_t found = said_.find(wanted);
            const std::size_t end = found == std::string::npos ? found : said_.find('\n', found);
            if (end != std::string::npos || !readMore()) {
                std::string part = said_.substr(0, end);
                said_.erase(0, end);
                return part;
            }
        }
    }

    std::string readAll() {
        while (readMore()) {
        }
        return std::exchange(said_, {});
    }

    /// What stands behind `label` in the next line that has it.
    std::string readLabelled(const std::string& label) {
        const std::string text = readTo(label);
        const std::size_t found = text.rfind(label);
        if (found == std::string::npos) throw std::runtime_error("not said: " + label);
        return text.substr(found + label.size());
    }

    /// Else what it says and nobody reads would hold it up one day.
    void stopReading() { close(std::exchange(output_, -1)); }

    /// Asks it to end; its exit status.
    int end() {
        kill(id_, SIGTERM);
        return wait();
    }

    int wait() {
        int status = 0;
        waitpid(std::exchange(id_, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

 private:
    bool readMore() {
        pollfd more{output_, POLLIN, 0};
        if (poll(&more, 1, 60'000) != 1) return false;
        char buffer[4096];
        const ssize_t size = read(output_, buffer, sizeof buffer);
        if (size > 0) said_.append(buffer, static_cast<std::size_t>(size));
        return size > 0;
    }

    pid_t id_ = 0;
    int output_ = -1;
    std::string said_;
};

}  // namespace VexmoraSDK
