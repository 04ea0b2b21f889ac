// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "app/BundleInformation.h"
#include "platform/SystemEvents.h"
#include "ui/Application.h"
#include "ui/Window.h"
#include "ui/Workspace.h"

namespace dorvanel::test {

/// The calls made on the fakes of one test, in order; the worker of a run calls too.
class CallLog {
  public:
    void add(const std::string& call) {
        const std::lock_guard lock(mutex_);
        calls_.push_back(call);
    }
    [[nodiscard]] std::vector<std::string> calls() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }
    void clear() {
        const std::lock_guard lock(mutex_);
        calls_.clear();
    }

  private:
    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
};

class FakeApplicationObject final : public ui::Application {
  public:
    explicit FakeApplicationObject(CallLog& log) : log_(log) {}
    void hide() override { log_.add("hide"); }
    void terminate() override { log_.add("terminate"); }
    void replyToApplicationShouldTerminate(bool shouldTerminate) override {
        log_.add(shouldTerminate ? "reply yes" : "reply no");
    }

  private:
    CallLog& log_;
};

/// A window whose sheet is answered when the test says so.
class FakeWindow final : public ui::Window {
  public:
    explicit FakeWindow(CallLog& log) : log_(log) {}
    void setFrameAutosaveName(const std::string& name) override { log_.add("autosave " + name); }
    void center() override { log_.add("center"); }
    void makeKeyAndOrderFront() override { log_.add("front"); }
    void beginSheet(const std::string& title, const std::string& message,
                    const std::string& defaultButton, const std::string& alternateButton,
                    const std::string& otherButton,
                    std::function<void(ui::SheetCode)> didDismiss) override {
        log_.add("sheet " + title + ": " + message + " [" + defaultButton + "|" + alternateButton +
                 "|" + otherButton + "]");
        dismiss = std::move(didDismiss);
    }

    std::function<void(ui::SheetCode)> dismiss;

  private:
    CallLog& log_;
};

class FakeWorkspace final : public ui::Workspace {
  public:
    void openURL(const std::string& url) override { urls.push_back(url); }
    std::vector<std::string> urls;
};

class FakeBundle final : public BundleInformation {
  public:
    std::string objectForInfoDictionaryKey(const std::string& key) const override {
        const auto found = values.find(key);
        return found == values.end() ? std::string() : found->second;
    }
    std::map<std::string, std::string> values;
};

class FakeSystemEvents final : public platform::SystemEvents {
  public:
    explicit FakeSystemEvents(CallLog& log) : log_(log) {}
    OSErr send(FourCharCode eventID) override {
        std::string code(4, ' ');
        for (int i = 0; i < 4; ++i)
            code[static_cast<std::size_t>(i)] = static_cast<char>(eventID >> (24 - 8 * i));
        log_.add("event " + code);
        return result;
    }
    OSErr result = noErr;

  private:
    CallLog& log_;
};

}  // namespace dorvanel::test
