// SPDX-License-Identifier: MIT
#include "support/RecordingSystemCalls.h"

#include <fmt/format.h>

namespace dorvanel::test {

std::string RecordingSystemCalls::Call::line() const {
    std::string text = fmt::format("{} {}", what, descriptor);
    if (!name.empty()) text += " " + name;
    if (!to.empty()) text += " -> " + to;
    if (length != 0) text += fmt::format(" {}+{} #{:x}", offset, length, hash);
    return text;
}

std::vector<RecordingSystemCalls::Call> RecordingSystemCalls::callsOf(
    const std::string& what) const {
    std::vector<Call> found;
    for (const Call& call : calls) {
        if (call.what == what) found.push_back(call);
    }
    return found;
}

std::string RecordingSystemCalls::lines() const {
    std::string text;
    for (const Call& call : calls) text += call.line() + "\n";
    return text;
}

int RecordingSystemCalls::remember(const char* what, int descriptor, const char* name, int result) {
    calls.push_back({what, descriptor, name, {}});
    return result;
}

int RecordingSystemCalls::openFile(int folder, const char* name, Links links) {
    const int file = ForwardingSystemCalls::openFile(folder, name, links);
    return remember("openFile", file, name, file);
}
int RecordingSystemCalls::openReference(int folder, const char* name, Links links) {
    const int reference = ForwardingSystemCalls::openReference(folder, name, links);
    return remember("openReference", reference, name, reference);
}
int RecordingSystemCalls::openFolder(int folder, const char* name) {
    const int opened = ForwardingSystemCalls::openFolder(folder, name);
    return remember("openFolder", opened, name, opened);
}
int RecordingSystemCalls::close(int descriptor) {
    return remember("close", descriptor, "", ForwardingSystemCalls::close(descriptor));
}
int RecordingSystemCalls::changeMode(int descriptor, std::uint32_t permissions) {
    return remember("changeMode", descriptor, fmt::format("{:o}", permissions).c_str(),
                    ForwardingSystemCalls::changeMode(descriptor, permissions));
}
int RecordingSystemCalls::makeFolder(int folder, const char* name, std::uint32_t permissions) {
    return remember("makeFolder", folder, name,
                    ForwardingSystemCalls::makeFolder(folder, name, permissions));
}
int RecordingSystemCalls::rename(int fromFolder, const char* from, int toFolder, const char* to) {
    calls.push_back({"rename", fromFolder, from, to});
    return ForwardingSystemCalls::rename(fromFolder, from, toFolder, to);
}
int RecordingSystemCalls::removeFile(int folder, const char* name) {
    return remember("removeFile", folder, name, ForwardingSystemCalls::removeFile(folder, name));
}
int RecordingSystemCalls::removeFolder(int folder, const char* name) {
    return remember("removeFolder", folder, name,
                    ForwardingSystemCalls::removeFolder(folder, name));
}
std::ptrdiff_t RecordingSystemCalls::writeAt(int file, const void* data, std::size_t size,
                                             std::uint64_t offset) {
    calls.push_back({"writeAt", file, {}, {}, offset, size, contentHash(data, size)});
    return ForwardingSystemCalls::writeAt(file, data, size, offset);
}
std::ptrdiff_t RecordingSystemCalls::readAt(int file, void* data, std::size_t size,
                                            std::uint64_t offset) {
    calls.push_back({"readAt", file, {}, {}, offset, size});
    return ForwardingSystemCalls::readAt(file, data, size, offset);
}
int RecordingSystemCalls::forgetCached(int file) {
    return remember("forgetCached", file, "", ForwardingSystemCalls::forgetCached(file));
}
int RecordingSystemCalls::flushFile(int file) {
    return remember("flushFile", file, "", ForwardingSystemCalls::flushFile(file));
}
int RecordingSystemCalls::flushFileSystem(int file) {
    return remember("flushFileSystem", file, "", ForwardingSystemCalls::flushFileSystem(file));
}

}  // namespace dorvanel::test
