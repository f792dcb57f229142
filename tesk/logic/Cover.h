#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Covers of multi-output switching functions: lists of cubes in bit-parallel form.
namespace logic {

using Word = std::uint64_t;

// Without help from the processor a call for each word would cost more than the count.
constexpr int CountBits(Word word) {
    word -= (word >> 1) & 0x5555555555555555u;
    word = (word & 0x3333333333333333u) + ((word >> 2) & 0x3333333333333333u);
    return static_cast<int>((((word + (word >> 4)) & 0x0F0F0F0F0F0F0F0Fu) * 0x0101010101010101u) >> 56);
}

// What a cube says of one input: the bits tell which values the input may have. `None` makes a cube empty.
enum class Literal : std::uint8_t { None = 0, Zero = 1, One = 2, Free = 3 };

// What a product says of an input that is not free.
struct InputLiteral {
    std::size_t Input;
    bool Negated;
};

// How a cube lies in words: first the inputs in positional notation, two bits each, 32 to a word (bit 2v:
// input v may be 0, bit 2v+1: it may be 1), then the outputs, one bit each, 64 to a word. Places behind the
// last input are always "free", places behind the last output always 0, so that no operation has to mask.
class Layout {
  public:
    static constexpr Word even = 0x5555555555555555u;

    Layout() = default;
    Layout(int inputs, int outputs)
        : inputs_(inputs),
          outputs_(outputs),
          inputWords_((inputs + 31) / 32),
          words_(inputWords_ + (outputs + 63) / 64),
          pair_(inputWords_ == 1 && words_ == 2) {}

    int Inputs() const { return inputs_; }
    int Outputs() const { return outputs_; }
    int InputWords() const { return inputWords_; }
    int OutputWords() const { return words_ - inputWords_; }
    int Words() const { return words_; }
    // One word of inputs and one of outputs: most covers. Their cubes are compared without loops.
    bool Pair() const { return pair_; }
    bool operator==(const Layout&) const = default;

    Literal Input(const Word* cube, int v) const {
        return static_cast<Literal>((cube[v >> 5] >> ((v & 31) * 2)) & 3);
    }
    void SetInput(Word* cube, int v, Literal value) const {
        const int shift = (v & 31) * 2;
        cube[v >> 5] = (cube[v >> 5] & ~(Word{3} << shift)) | (static_cast<Word>(value) << shift);
    }
    bool Output(const Word* cube, int o) const {
        return ((cube[inputWords_ + (o >> 6)] >> (o & 63)) & 1) != 0;
    }
    void SetOutput(Word* cube, int o, bool value) const {
        const Word bit = Word{1} << (o & 63);
        Word& word = cube[inputWords_ + (o >> 6)];
        word = value ? word | bit : word & ~bit;
    }

    // Keeps of the cube the points where the input has the value.
    void Restrict(Word* cube, int v, bool value) const {
        cube[v >> 5] &= ~(Word{value ? 1u : 2u} << ((v & 31) * 2));
    }

    // The inputs that are free in every place, marked by the even bit, of one word of a cube.
    static Word FreePlaces(Word word) { return word & (word >> 1) & even; }
    static Word FilledPlaces(Word word) { return (word | (word >> 1)) & even; }

    // Whether b lies in a, in all parts or in the inputs or outputs alone.
    bool Contains(const Word* a, const Word* b) const {
        if (pair_) return ((b[0] & ~a[0]) | (b[1] & ~a[1])) == 0;
        return ContainsRange(a, b, 0, words_);
    }
    bool InputsContain(const Word* a, const Word* b) const {
        if (pair_) return (b[0] & ~a[0]) == 0;
        return ContainsRange(a, b, 0, inputWords_);
    }
    bool OutputsContain(const Word* a, const Word* b) const {
        return ContainsRange(a, b, inputWords_, words_);
    }

    bool InputsMeet(const Word* a, const Word* b) const {
        if (pair_) return FilledPlaces(a[0] & b[0]) == even;
        for (int w = 0; w < inputWords_; ++w)
            if (FilledPlaces(a[w] & b[w]) != even) return false;
        return true;
    }
    // How much of the region's inputs the cube holds.
    enum class Overlap { None, Part, Whole };
    Overlap InputOverlap(const Word* cube, const Word* region) const {
        bool whole = true;
        for (int w = 0; w < inputWords_; ++w) {
            if (FilledPlaces(cube[w] & region[w]) != even) return Overlap::None;
            whole &= (region[w] & ~cube[w]) == 0;
        }
        return whole ? Overlap::Whole : Overlap::Part;
    }
    bool OutputsMeet(const Word* a, const Word* b) const {
        if (pair_) return (a[1] & b[1]) != 0;
        for (int w = inputWords_; w < words_; ++w)
            if ((a[w] & b[w]) != 0) return true;
        return false;
    }
    bool Meet(const Word* a, const Word* b) const { return OutputsMeet(a, b) && InputsMeet(a, b); }

    // The number of parts (each input, and the outputs as one) in which a and b have nothing in common.
    int Distance(const Word* a, const Word* b) const;

    // result = the common part of a and b, the smallest cube around both; result may be a or b.
    void Intersect(Word* result, const Word* a, const Word* b) const {
        for (int w = 0; w < words_; ++w) result[w] = a[w] & b[w];
    }
    void Supercube(Word* result, const Word* a, const Word* b) const {
        for (int w = 0; w < words_; ++w) result[w] = a[w] | b[w];
    }

    bool Same(const Word* a, const Word* b) const {
        if (pair_) return ((a[0] ^ b[0]) | (a[1] ^ b[1])) == 0;
        return SameRange(a, b, words_);
    }
    bool HasOutputs(const Word* cube) const { return OutputsMeet(cube, cube); }
    bool IsEmpty(const Word* cube) const { return !HasOutputs(cube) || !InputsMeet(cube, cube); }
    int InputLiterals(const Word* cube) const;                     // inputs that are not free
    std::vector<InputLiteral> LiteralsOf(const Word* cube) const;  // of a cube that is not empty, by inputs
    int OutputCount(const Word* cube) const;
    int Bits(const Word* cube) const;  // more than those of every smaller cube inside

  private:
    static bool SameRange(const Word* a, const Word* b, int words) {
        for (int w = 0; w < words; ++w)
            if (a[w] != b[w]) return false;
        return true;
    }
    bool ContainsRange(const Word* a, const Word* b, int from, int to) const {
        for (int w = from; w < to; ++w)
            if ((b[w] & ~a[w]) != 0) return false;
        return true;
    }

    int inputs_ = 0;
    int outputs_ = 0;
    int inputWords_ = 0;
    int words_ = 0;
    bool pair_ = false;
};

// A list of cubes of one layout: for each output the sum of the products whose cubes have that output. Cubes
// may overlap; a pointer to a cube lives until the next change of the list.
class Cover {
  public:
    Cover() = default;
    Cover(int inputs, int outputs) : layout_(inputs, outputs) {}
    explicit Cover(const Layout& layout) : layout_(layout) {}

    const Layout& Form() const { return layout_; }
    int Inputs() const { return layout_.Inputs(); }
    int Outputs() const { return layout_.Outputs(); }
    std::size_t Size() const { return size_; }
    bool Empty() const { return size_ == 0; }
    const Word* operator[](std::size_t i) const { return data_.data() + i * Stride(); }
    Word* operator[](std::size_t i) { return data_.data() + i * Stride(); }

    // Appends a cube whose inputs are all free and that has no output yet; the caller fills it in.
    Word* Append();
    void Add(const Word* cube);  // `cube` must not lie in this cover
    void AddAll(const Cover& other);
    // Appends a cube from text: one of 0 1 - for each input, one of 0 1 for each output. Other characters or
    // lengths raise error 5 (invalid call).
    void Add(std::string_view inputs, std::string_view outputs);

    void Reserve(std::size_t cubes) { data_.reserve(cubes * Stride()); }
    void Clear();
    void Truncate(std::size_t size);  // keeps the first `size` cubes
    void RemoveEmpty();               // drops cubes that hold no point

    // Sorts by words, so that equal lists of cubes have equal data, and drops equal cubes.
    void SortUnique();
    // Drops every cube that lies in one other cube, equal ones but one. Of more than some 20,000 cubes a few
    // may stay, so that the time is bounded.
    void Absorb();

    // Whether the cubes at the point (bit v of word v/64 is input v) make the output 1.
    bool Evaluate(const std::vector<Word>& point, int output) const;

    std::size_t Literals() const;  // literals of inputs and outputs of all cubes
    bool operator==(const Cover&) const = default;

  private:
    std::size_t Stride() const { return static_cast<std::size_t>(layout_.Words()); }

    Layout layout_;
    std::size_t size_ = 0;
    std::vector<Word> data_;
};

// One cube, which holds all points of all outputs.
Cover Everything(const Layout& layout);

// What both hold: each cube of `a` cut down to each of `b` that it meets, in this order. Nothing if these are
// more than `limit`.
std::optional<Cover> Intersection(const Cover& a, const Cover& b, std::size_t limit);
Cover Intersection(const Cover& a, const Cover& b);

// The cubes of one output, as a cover of one output.
Cover OutputOf(const Cover& cover, int output);

// The cube as text, inputs and outputs: "1-0" and "01".
std::string InputText(const Layout& layout, const Word* cube);
std::string OutputText(const Layout& layout, const Word* cube);

}  // namespace logic
