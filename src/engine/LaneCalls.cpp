// SPDX-License-Identifier: MIT
#include "engine/LaneCalls.h"

namespace dorvanel {

using platform::EntryKind;
using platform::SystemCalls;
using State = LaneCall::State;

std::size_t LaneCalls::addText(const char* name) {
    const std::size_t start = text_.size();
    text_.append(name);
    text_.push_back('\0');
    return start;
}

bool LaneCalls::hold(HeldWrites& held, const void* bytes, std::size_t size, std::uint64_t offset,
                     bool mayLackRoom) {
    if (held.count == HeldWrites::most) return false;
    const std::size_t start = bytes_.size();
    const char* from = static_cast<const char*>(bytes);
    bytes_.insert(bytes_.end(), from, from + size);
    held.writes[held.count++] = {start, size, offset, mayLackRoom};
    return true;
}

BlockWritten LaneCalls::write(SystemCalls& system, int file, const HeldWrites& held) const {
    BlockWritten all;
    for (std::size_t i = 0; i < held.count; ++i) {
        const HeldWrites::Write& write = held.writes[i];
        const BlockWritten written = writeBlock(system, file, bytes_.data() + write.start,
                                                write.size, write.offset, write.mayLackRoom);
        all.bytes += written.bytes;
        if (all.code == 0) all.code = written.code;
    }
    return all;
}

void LaneCalls::make(SystemCalls& system) {
    while (done < calls.size()) {
        LaneCall& call = calls[done];
        make(system, call);
        ++done;  // not if it threw: then it is made again
        if (call.state != State::made) return;
    }
}

void LaneCalls::make(SystemCalls& system, LaneCall& call) const {
    const int folder = call.folderDescriptor;
    const char* name = text(call.name);
    int result = 0;
    if (call.what == LaneCall::What::look) {
        result = system.statusAt(folder, name, SystemCalls::Links::stay, call.status);
        call.state = State::made;
    } else if (call.what == LaneCall::What::rename) {
        result = system.rename(folder, name, folder, text(call.newName));
        call.state = State::made;
    } else {
        const int code = write(system, call.file, call.held).code;
        if (call.code == 0) call.code = code;
        call.state = State::notWritten;
        if (call.code != 0) return;
        if (call.file >= 0) system.close(call.file);
        call.file = -1;
        result = call.kind == EntryKind::folder ? system.removeFolder(folder, name)
                                                : system.removeFile(folder, name);
        call.state = result < 0 ? State::notRemoved : State::made;
    }
    call.code = result < 0 ? -result : 0;
}

void LaneCalls::clear() {
    calls.clear();
    text_.clear();
    bytes_.clear();
    done = told = 0;
}

}  // namespace dorvanel
