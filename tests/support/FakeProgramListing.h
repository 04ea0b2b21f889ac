// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/LockProbe.h"
#include "platform/ProgramEnds.h"
#include "platform/ProgramListing.h"

namespace dorvanel::test {

/// What runs is what a test has run; remembers who was asked to quit.
class FakeProgramListing final : public platform::ProgramListing {
  public:
    std::optional<std::vector<platform::RunningProgram>> list() override {
        ++lists;
        if (onList) onList();
        if (fails) return std::nullopt;
        return programs;
    }
    bool askToQuit(const platform::RunningProgram& program) override {
        asked.push_back(program.process.pid);
        if (onQuit) onQuit(program.process.pid);
        return std::count(gone.begin(), gone.end(), program.process.pid) == 0;
    }

    /// Starts a program; the numbers count up from 101.
    platform::RunningProgram& start(const std::string& executable, std::int32_t parent = 1) {
        platform::RunningProgram program;
        program.process = {++lastPid, 7};
        program.parent = parent;
        program.executable = executable;
        program.comm = executable.substr(executable.rfind('/') + 1).substr(0, 15);
        return programs.emplace_back(program);
    }
    void end(std::int32_t pid) {
        std::erase_if(programs, [&](const auto& program) { return program.process.pid == pid; });
    }

    std::vector<platform::RunningProgram> programs;
    std::vector<std::int32_t> gone;  ///< by the time that they are asked
    std::vector<std::int32_t> asked;
    std::function<void()> onList;              ///< before a listing is given
    std::function<void(std::int32_t)> onQuit;  ///< when one is asked
    bool fails = false;
    int lists = 0;
    std::int32_t lastPid = 100;
};

/// Ends are told when a test says so, and only of what is followed.
class FakeProgramEnds final : public platform::ProgramEnds {
  public:
    void tell(Ended ended) override { ended_ = std::move(ended); }
    Following follow(const platform::ProcessIdentity& process) override {
        if (isFollowed(process.pid)) return Following::yes;
        if (answer == Following::yes) followed.push_back(process);
        return answer;
    }
    void unfollow(const platform::ProcessIdentity& process) override {
        std::erase(followed, process);
    }

    [[nodiscard]] bool isFollowed(std::int32_t pid) const {
        return std::any_of(followed.begin(), followed.end(),
                           [&](const auto& process) { return process.pid == pid; });
    }
    void end(const std::vector<std::int32_t>& pids) {
        std::vector<platform::ProcessIdentity> ended;
        for (const std::int32_t pid : pids) {
            if (isFollowed(pid)) ended.push_back({pid, 7});
        }
        for (const auto& process : ended) std::erase(followed, process);
        const Ended listener = ended_;
        if (!ended.empty() && listener) listener(ended);
    }

    std::vector<platform::ProcessIdentity> followed;
    Following answer = Following::yes;  ///< to whoever wants one more followed

  private:
    Ended ended_;
};

class FakeLockProbe final : public platform::LockProbe {
  public:
    [[nodiscard]] platform::LockState stateOf(const std::string& path) const override {
        probed.push_back(path);
        return state;
    }

    platform::LockState state = platform::LockState::free;
    mutable std::vector<std::string> probed;
};

}  // namespace dorvanel::test
