#include "logic/TernaryTable.h"

#include <algorithm>

namespace logic {

void TernaryTable::Primes(const Cover& function, const std::vector<int>& inputs, Cover& primes) {
    while (powers_.size() <= inputs.size()) powers_.push_back(powers_.back() * 3);
    const std::size_t points = std::size_t{1} << inputs.size();
    table_.resize(std::max(table_.size(), powers_[inputs.size()] * outputWords_));
    std::fill_n(table_.begin(), points * outputWords_, Word{0});
    for (std::size_t i = 0; i < function.Size(); ++i) Enter(function[i], inputs);
    for (std::size_t k = inputs.size(); k-- > 0;)
        AddFree((std::size_t{1} << k) * outputWords_, powers_[inputs.size() - 1 - k]);
    if (outputWords_ == 1)
        Collect<1>(inputs, primes);
    else
        Collect<0>(inputs, primes);
}

// Marks the outputs of the cube at all its points: bit k of a point's place is the value of inputs[k].
void TernaryTable::Enter(const Word* cube, const std::vector<int>& inputs) {
    std::size_t ones = 0, free = 0;
    for (std::size_t k = 0; k < inputs.size(); ++k) {
        const Literal literal = layout_.Input(cube, inputs[k]);
        ones |= static_cast<std::size_t>(literal == Literal::One ? 1 : 0) << k;
        free |= static_cast<std::size_t>(literal == Literal::Free ? 1 : 0) << k;
    }
    const Word* outputs = cube + layout_.InputWords();
    std::size_t part = 0;
    do {
        for (std::size_t w = 0; w < outputWords_; ++w) table_[(ones | part) * outputWords_ + w] |= outputs[w];
        part = (part - free) & free;
    } while (part != 0);
}

// Puts behind each two blocks, an input being 0 and 1, a third one with what holds for both. From the last
// one on: what moves goes up.
void TernaryTable::AddFree(std::size_t block, std::size_t blocks) {
    for (std::size_t b = blocks; b-- > 0;) {
        const Word* zero = table_.data() + 2 * b * block;
        const Word* one = zero + block;
        Word* to = table_.data() + 3 * b * block;
        if (block == 1) {
            const Word low = *zero, high = *one;
            to[0] = low, to[1] = high, to[2] = low & high;
            continue;
        }
        for (std::size_t i = 0; i < block; ++i) to[2 * block + i] = zero[i] & one[i];
        std::copy_backward(zero, zero + 2 * block, to + 2 * block);
    }
}

template <int words>
void TernaryTable::Collect(const std::vector<int>& inputs, Cover& primes) {
    digits_.assign(inputs.size(), 0);
    for (std::size_t index = 0; index < powers_[inputs.size()]; ++index) {
        if (IsPrime<words>(index)) Emit(index, inputs, primes);
        for (std::size_t k = 0; k < digits_.size() && ++digits_[k] == 3; ++k) digits_[k] = 0;
    }
}

template <int words>
bool TernaryTable::IsPrime(std::size_t index) const {
    const std::size_t stride = words == 1 ? 1 : outputWords_;
    const Word* entry = &table_[index * stride];
    if (std::all_of(entry, entry + stride, [](Word w) { return w == 0; })) return false;
    for (std::size_t k = 0; k < digits_.size(); ++k) {
        if (digits_[k] == 2) continue;
        const Word* wider = entry + (2 - digits_[k]) * powers_[k] * stride;
        if (words == 1 ? *entry == *wider : std::equal(entry, entry + stride, wider)) return false;
    }
    return true;
}

void TernaryTable::Emit(std::size_t index, const std::vector<int>& inputs, Cover& primes) const {
    Word* cube = primes.Append();
    for (std::size_t k = 0; k < digits_.size(); ++k)
        layout_.SetInput(cube, inputs[k], static_cast<Literal>(digits_[k] + 1));
    std::copy_n(&table_[index * outputWords_], outputWords_, cube + layout_.InputWords());
}

}  // namespace logic
