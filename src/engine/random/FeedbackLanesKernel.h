// SPDX-License-Identifier: MIT

// The bulk generator's body, included once for each instruction set that FeedbackLanes.cpp builds
// it for; hence no include guard and no include. `Lanes` and `LaneJump` stand there.

inline void jumpWindow(const Extended& words, const Jump& jump, Window& result) {
    for (std::size_t m = 0; m < degree; ++m) {
        for (std::size_t i = 0; i < degree; ++i) result[i] += jump.factors[m] * words[i + m];
    }
}

/// The window of each lane's stretch.
inline void startLanes(const Extended& words, const LaneJump& jump, Lanes* state) {
    for (std::size_t i = 0; i < degree; ++i) {
        Lanes sum{};
        for (std::size_t m = 0; m < degree; ++m) sum += jump[m] * words[i + m];
        state[i] = sum;
    }
}

/// Stores eight steps of all lanes: eight 16-bit words to each lane's own stretch.
inline void storeSteps(const Lanes* steps, std::uint16_t* words, std::size_t stretch) {
    Lanes pairs[4];
    for (std::size_t i = 0; i < 4; ++i) {
        // Bits 1 to 16 of both words: the even step's in the lower half, the odd one's above.
        pairs[i] = ((steps[2 * i] >> 1) & 0xFFFF) | (steps[2 * i + 1] << 15 & 0xFFFF0000);
    }
    const Lanes low01 = __builtin_shufflevector(pairs[0], pairs[1], 0, 8, 1, 9, 4, 12, 5, 13);
    const Lanes high01 = __builtin_shufflevector(pairs[0], pairs[1], 2, 10, 3, 11, 6, 14, 7, 15);
    const Lanes low23 = __builtin_shufflevector(pairs[2], pairs[3], 0, 8, 1, 9, 4, 12, 5, 13);
    const Lanes high23 = __builtin_shufflevector(pairs[2], pairs[3], 2, 10, 3, 11, 6, 14, 7, 15);
    const Lanes lanes04 = __builtin_shufflevector(low01, low23, 0, 1, 8, 9, 4, 5, 12, 13);
    const Lanes lanes15 = __builtin_shufflevector(low01, low23, 2, 3, 10, 11, 6, 7, 14, 15);
    const Lanes lanes26 = __builtin_shufflevector(high01, high23, 0, 1, 8, 9, 4, 5, 12, 13);
    const Lanes lanes37 = __builtin_shufflevector(high01, high23, 2, 3, 10, 11, 6, 7, 14, 15);
    const Lanes* const halves[4] = {&lanes04, &lanes15, &lanes26, &lanes37};
    for (std::size_t lane = 0; lane < 4; ++lane) {
        __builtin_memcpy(words + lane * stretch, halves[lane], 16);
        __builtin_memcpy(words + (lane + 4) * stretch,
                         reinterpret_cast<const char*>(halves[lane]) + 16, 16);
    }
}

inline void runLanes(const Extended& start, const LaneJump& jump, std::uint16_t* words,
                     std::size_t stretch) {
    constexpr std::size_t block = 256;  // steps between two moves of the window; 9 KiB, so in L1
    Lanes state[degree + block];
    startLanes(start, jump, state);
    for (std::size_t done = 0; done < stretch; done += block) {
        // The last three steps stay in registers: a step waits for them and for nothing else.
        Lanes a = state[tap], b = state[tap + 1], c = state[tap + 2];
        for (std::size_t i = 0; i < block; i += 8) {
            const Lanes* old = state + i;
            Lanes steps[8];
            steps[0] = a + old[0];
            steps[1] = b + old[1];
            steps[2] = c + old[2];
            for (std::size_t k = 3; k < 8; ++k) steps[k] = steps[k - 3] + old[k];
            for (std::size_t k = 0; k < 8; ++k) state[degree + i + k] = steps[k];
            a = steps[5];
            b = steps[6];
            c = steps[7];
            storeSteps(steps, words + done + i, stretch);
        }
        __builtin_memcpy(state, state + block, degree * sizeof(Lanes));
    }
}
