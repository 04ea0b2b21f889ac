// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/desktop/applications/TraceSurvey.h"
#include "platform/FileManager.h"
#include "support/TemporaryFolder.h"

namespace dorvanel::test {

/// Descriptions of two applications that nobody has: "ibis", a browser with a cache and a history
/// that are recommended, and cookies; "lynx", a mail program with junk only, which is not.
class SmallCatalogue {
  public:
    SmallCatalogue() {
        add("ibis",
            "name = \"Ibis\"\nkind = \"browser\"\nicon = \"ibis\"\n"
            "processes = [\"ibis\"]\nlocks = [\"{config}/lock\"]\n" +
                install("ibis") + trace("cache", true) + trace("history", true) +
                trace("cookies", false, "Every site asks you to log in again."));
        add("lynx", "name = \"Lynx\"\nkind = \"mail\"\nicon = \"lynx\"\nprocesses = [\"lynx\"]\n" +
                        install("lynx") + trace("junk", false));
    }
    void add(const std::string& id, const std::string& text) {
        writeFile(folder_ / (id + ".toml"), text);
    }
    static std::string install(const std::string& name) {
        return "[[install]]\nname = \"native\"\nconfig = \"~/." + name + "\"\n";
    }
    static std::string trace(const std::string& kind, bool recommended,
                             const std::string& why = {}) {
        return "[[trace]]\nkind = \"" + kind + "\"\n" +
               (recommended ? std::string("recommended = true\n") : std::string()) +
               (why.empty() ? std::string() : "why = \"" + why + "\"\n") + "shred = [\"{config}/" +
               kind + "/*\"]\n";
    }

    [[nodiscard]] catalogue::Catalogue load() const {
        return catalogue::Catalogue::load({folder_.path(), {}}, platform::defaultFileManager());
    }

    /// News of a count that has begun and found these.
    [[nodiscard]] desktop::SurveyNews found(const std::vector<std::string>& ids) const {
        desktop::SurveyNews news;
        news.catalogue = std::make_shared<const catalogue::Catalogue>(load());
        news.found = {ids.begin(), ids.end()};
        return news;
    }
    /// What is counted of an application, kind by kind.
    static std::pair<std::string, TraceSizes> counted(const std::string& id,
                                                      const std::vector<TraceSize>& sizes) {
        TraceSizes all;
        all.isFound = true;
        all.traces = sizes;
        return {id, all};
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace dorvanel::test
