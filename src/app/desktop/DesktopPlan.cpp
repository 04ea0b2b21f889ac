// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include "app/RunLook.h"
#include "app/TrashLook.h"
#include "app/desktop/Bytes.h"
#include "app/desktop/Desktop.h"
#include "app/desktop/Words.h"
#include "app/desktop/plan/ItemsDialog.h"
#include "app/desktop/plan/PlanDialog.h"
#include "app/desktop/plan/PlanWords.h"
#include "app/desktop/plan/Plans.h"
#include "engine/FileAccess.h"
#include "run/ShreddingRun.h"
#include "targets/traces/HomeRoot.h"

// What people can look at before it is shredded: what a run would take, what is in the trash, what
// was dropped on the window. A thread looks, while the window shows that it does.

namespace dorvanel::desktop {
namespace {

/// What a look has found for a dialog that shows a plan.
struct Finding {
    ShownPlan shown;
    PlanTree tree;
    QString trouble;
};

constexpr std::chrono::milliseconds betweenFindings{100};

/// Measures items one after another, and tells what it finds now and then.
class Measuring {
  public:
    using Tell = std::function<void(std::vector<ItemFinding>)>;

    explicit Measuring(Tell tell) : tell_(std::move(tell)) {}

    Plan measure(const std::vector<HeldItem>& items, const ItemPlanner::Parts& planning) {
        ItemPlanner(planning).add(items, plan_, [this](std::size_t item) {
            note();
            row_ = static_cast<std::uint32_t>(item);
            const auto now = std::chrono::steady_clock::now();
            if (now - told_ >= betweenFindings) {
                told_ = now;
                tell_(std::exchange(found_, {}));
            }
            return ItemPlanner::Origin{};
        });
        note();
        tell_(std::exchange(found_, {}));
        return std::move(plan_);
    }

  private:
    /// The plan has an item more where the one that was begun last is no part of another.
    void note() {
        if (plan_.items.size() == noted_) return;
        noted_ = plan_.items.size();
        const PlanItem& item = plan_.items.back();
        found_.push_back({row_, item.files + item.folders, item.bytes, noteBits(item)});
    }

    Tell tell_;
    Plan plan_;
    std::vector<ItemFinding> found_;
    std::size_t noted_ = 0;
    std::uint32_t row_ = 0;
    std::chrono::steady_clock::time_point told_;
};

/// What is found out of items while the question about them is up.
struct Checking {
    std::optional<Result<ShredArguments>> result;
    std::shared_ptr<ItemsModel::Items> items;  ///< those of a result without complaints
    QStringList notices;
};

}  // namespace

void Desktop::makePlans() {
    plans_ = std::make_unique<Plans>(
        loop_, services_.makeLookServices(),
        IdleLine::Parts{
            .choice = [this] { return choice(); },
            .isIdle = [this] { return !controller_->isBusy() && questions_ == 0; },
            .show = [this](const QString& line) { activity_->setIdleLine(line); },
            .choiceChanged = [this] { activity_->forgetResult(); },
        });
}

RunChoice Desktop::choice() const {
    return RunChoice::now(services_.preferencesInstance, services_.defaults,
                          controller_->run().logoutShutdownRestart());
}

void Desktop::plansFollow(Activity now) {
    if (now == Activity::idle) return plans_->idleLine.forget();
    plans_->looker.stop();
}

bool Desktop::waitForLook() {
    while (plans_->looker.isAtWork() && !loop_.isStopping()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents |
                                        QEventLoop::ExcludeUserInputEvents);
    }
    return !loop_.isStopping();
}

/// Shows the dialog, in which the look shows what it finds. Whether the person agrees.
bool Desktop::askAboutPlan(const PlanDialog::Texts& texts, const LookForPlan& look) {
    const QtRunLoop::Hold hold(loop_);
    setAsking(true);
    PlanDialog dialog(window_->window(), texts);
    auto shown = std::make_shared<PlanDialog*>(&dialog);
    const auto finding = std::make_shared<Finding>();
    plans_->looker.start(
        [finding, look](const Looker::Stop& stop) {
            Result<ShownPlan> found = look(stop);
            if (!found) {
                finding->trouble = displayText(found.error().message());
                return;
            }
            finding->shown = std::move(found.value());
            finding->tree = PlanTree(finding->shown, {});
        },
        [finding, weak = std::weak_ptr(shown)](bool isWhole) {
            const auto open = weak.lock();
            if (open == nullptr) return;
            PlanDialog& asking = **open;
            if (!isWhole) return asking.reject();  // it makes room for something else
            if (!finding->trouble.isEmpty()) return asking.showTrouble(finding->trouble);
            asking.showPlan(std::move(finding->shown), std::move(finding->tree));
        });
    const bool isAgreed = !loop_.isStopping() && dialog.exec() == QDialog::Accepted;
    shown.reset();
    plans_->looker.stop();
    setAsking(false);
    return isAgreed && !loop_.isStopping();
}

void Desktop::previewRun() {
    if (refuses()) return;
    if (!services_.preferencesInstance.areKnown()) return tellRefusal(Refusal::preferencesUnknown);
    const auto plan = std::make_shared<std::shared_ptr<const Plan>>();
    const bool isAgreed = askAboutPlan(
        {Words::tr("Preview"),
         Words::tr("This is what “Shred Traces” would take. Nothing has been touched."),
         Words::tr("There is nothing to shred now.")},
        [plan, choice = choice(),
         &services = *plans_->services](const Looker::Stop& stop) -> Result<ShownPlan> {
            LookedAtRun looked = lookAtRun(choice, services, LookDepth::notes, stop);
            *plan = std::make_shared<const Plan>(std::move(looked.plan));
            return ShownPlan{*plan, std::move(looked.names), traces::realHome()};
        });
    if (isAgreed) controller_->run().shredPlanned(**plan);
}

void Desktop::shredTrash() {
    if (refuses()) return;
    if (!services_.preferencesInstance.areKnown()) return tellRefusal(Refusal::preferencesUnknown);
    const auto looked = std::make_shared<LookedAtTrash>();
    const bool isAgreed = askAboutPlan(
        {Words::tr("Shred Trash"),
         Words::tr("This is in the trash. Once it is shredded there is no way back."),
         Words::tr("The trash is empty.")},
        [looked, &services = *plans_->services](const Looker::Stop& stop) -> Result<ShownPlan> {
            Result<LookedAtTrash> found = lookAtTrash(services, stop);
            if (!found) return found.error();
            *looked = std::move(found.value());
            return ShownPlan{{looked->trash, &looked->trash->plan()}, {}, traces::realHome()};
        });
    if (!isAgreed) return;
    if (controller_->isBusy()) return tellRefusal(Refusal::atWork);
    controller_->fileAccessInstance().protect(std::move(looked->protectedFolders));
    controller_->run().shredTrash(std::move(looked->trash));
}

std::vector<HeldItem> Desktop::askAboutItems(const std::vector<std::string>& files,
                                             const QString& title) {
    const auto paths = std::make_shared<const ItemsModel::Paths>(files);
    const auto checking = std::make_shared<Checking>();
    bool isAgreed = false;
    {
        const QtRunLoop::Hold hold(loop_);
        setAsking(true);
        ItemsDialog dialog(window_->window(), paths);
        dialog.setWindowTitle(title);
        auto shown = std::make_shared<ItemsDialog*>(&dialog);
        // What is posted may be dropped unread, and so holds neither the dialog nor the items.
        const auto tell = [&loop = loop_, weak = std::weak_ptr(shown)](auto show) {
            loop.performOnMainThread([weak, show = std::move(show)] {
                if (const auto open = weak.lock()) show(**open);
            });
        };
        plans_->looker.start(
            [checking, paths, tell, &services = *plans_->services](const Looker::Stop& stop) {
                checking->result.emplace(checkShredArguments(
                    *paths, *services.system, platform::SystemCalls::Links::follow, stop));
                if (!*checking->result || stop()) return;
                ShredArguments& checked = checking->result->value();
                if (!checked.complaints.empty()) return;
                checking->items = std::make_shared<ItemsModel::Items>(std::move(checked.items));
                tell([weak = std::weak_ptr(checking)](ItemsDialog& asking) {
                    if (const auto found = weak.lock()) asking.showChecked(found->items);
                });
                Measuring measuring([&tell](std::vector<ItemFinding> found) {
                    tell([found = std::move(found)](ItemsDialog& asking) { asking.add(found); });
                });
                const Plan plan = measuring.measure(
                    *checking->items,
                    services.planning.parts(*services.system, stop, checked.protectedFolders));
                checking->notices = noticeWords(plan);
            },
            [checking, weak = std::weak_ptr(shown)](bool isWhole) {
                const auto open = weak.lock();
                if (open == nullptr) return;
                ItemsDialog& asking = **open;
                if (!isWhole || checking->items == nullptr) return asking.reject();
                asking.showComplete(checking->notices);
            });
        isAgreed = !loop_.isStopping() && dialog.exec() == QDialog::Accepted;
        shown.reset();
        // The items are the thread's until it has put them down.
        plans_->looker.stop();
        isAgreed = waitForLook() && isAgreed;
        setAsking(false);
    }
    if (loop_.isStopping() || !checking->result) return {};
    const bool isRefused = !*checking->result || !checking->result->value().complaints.empty();
    if (isRefused) return takeChecked(std::move(*checking->result));
    if (!isAgreed || checking->items == nullptr) return {};
    if (controller_->isBusy()) {
        tellRefusal(Refusal::atWork);
        return {};
    }
    checking->result->value().items = std::move(*checking->items);
    return takeChecked(std::move(*checking->result));
}

}  // namespace dorvanel::desktop
