// SPDX-License-Identifier: MIT
#include "run/OutcomeSum.h"

#include <iterator>
#include <utility>

namespace dorvanel {

void addOutcome(Outcome& all, Outcome more) {
    for (std::uint64_t Outcome::*count :
         {&Outcome::items, &Outcome::filesOverwritten, &Outcome::bytesOverwritten,
          &Outcome::filesRemoved, &Outcome::foldersRemoved, &Outcome::filesVerified,
          &Outcome::notVerified, &Outcome::notOverwritten, &Outcome::notRemoved,
          &Outcome::notFlushed, &Outcome::vanished, &Outcome::filesCleaned, &Outcome::rowsRemoved,
          &Outcome::notCleaned}) {
        all.*count += more.*count;
    }
    all.stopped = all.stopped || more.stopped;
    const std::uint64_t onlyCounted = more.allTroubles - more.troubles.size();
    for (Outcome::Trouble& trouble : more.troubles) {
        ++all.allTroubles;
        if (all.troubles.size() < Outcome::keptTroubles) all.troubles.push_back(std::move(trouble));
    }
    all.allTroubles += onlyCounted;
    all.left.insert(all.left.end(), std::move_iterator(more.left.begin()),
                    std::move_iterator(more.left.end()));
    all.perItem.insert(all.perItem.end(), std::move_iterator(more.perItem.begin()),
                       std::move_iterator(more.perItem.end()));
}

}  // namespace dorvanel
