// SPDX-License-Identifier: MIT
#include "run/RunPreview.h"

#include <string>
#include <vector>

#include "run/RunCollection.h"
#include "run/RunPlan.h"
#include "run/UntouchedFiles.h"
#include "targets/Collectors.h"

namespace dorvanel {

Plan RunPreview::plan(bool withQuicktime, const ItemPlanner::Parts& planning) {
    UntouchedFiles files(parts_.files);
    std::vector<std::string> shredList;
    Collectors collectors(shredList, parts_.preferencesInstance, files, parts_.defaults,
                          parts_.clock);
    collectors.onlyLook();
    RunCollection collection({.browserWatch = parts_.browserWatch,
                              .collectors = collectors,
                              .mPathArray = shredList,
                              .traces = parts_.traces},
                             TraceCollection::Purpose::looking);
    parts_.browserWatch.HandleBrowserWatchTimer(nullptr);
    collection.collect(withQuicktime, [&] { return planning.stop && planning.stop(); });
    Plan plan = planOfRun(collection.items(), planning);
    std::vector<PlanSkip> skipped = collection.skips();
    plan.skipped.insert(plan.skipped.begin(), skipped.begin(), skipped.end());
    collection.clear();
    return plan;
}

}  // namespace dorvanel
