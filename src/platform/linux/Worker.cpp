// SPDX-License-Identifier: MIT
#include "platform/Worker.h"

#include <system_error>
#include <thread>
#include <utility>

namespace dorvanel::platform {
namespace {

class ThreadWorker final : public Worker {
  public:
    ~ThreadWorker() override { ThreadWorker::wait(); }

    Result<Done> start(std::function<void()> work) override {
        wait();
        try {
            thread_ = std::thread(std::move(work));
        } catch (const std::system_error& error) {
            return Error{error.code().value(), "start a thread", {}, {}};
        }
        return Done{};
    }

    void wait() override {
        if (thread_.joinable()) thread_.join();
    }

  private:
    std::thread thread_;
};

}  // namespace

std::unique_ptr<Worker> makeWorker() {
    return std::make_unique<ThreadWorker>();
}

}  // namespace dorvanel::platform
