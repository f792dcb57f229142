#include "front/Arithmetic.h"

#include <limits>

#include "front/Limits.h"
#include "front/Source.h"

namespace front {

namespace {

class Evaluator {
  public:
    Evaluator(std::string_view text, const Bindings& names) : text_(text), names_(names) {}

    ArithmeticResult Run(std::int64_t& value) {
        value = Sum();
        Skip();
        if (at_ != text_.size()) Fail(ArithmeticResult::NotOne);
        return result_;
    }

  private:
    void Fail(ArithmeticResult why) {
        if (result_ != ArithmeticResult::NotOne) result_ = why;
    }
    void Skip() {
        while (at_ < text_.size() && IsBlank(text_[at_])) ++at_;
    }
    bool Take(char c) {
        Skip();
        if (at_ >= text_.size() || text_[at_] != c) return false;
        ++at_;
        return true;
    }

    std::int64_t Sum() {
        std::int64_t value = Product();
        while (result_ != ArithmeticResult::NotOne) {
            bool overflow = false;
            if (Take('+'))
                overflow = __builtin_add_overflow(value, Product(), &value);
            else if (Take('-'))
                overflow = __builtin_sub_overflow(value, Product(), &value);
            else
                break;
            if (overflow) Fail(ArithmeticResult::OutOfRange);
        }
        return value;
    }

    std::int64_t Product() {
        std::int64_t value = Factor();
        while (result_ != ArithmeticResult::NotOne) {
            if (Take('*')) {
                if (__builtin_mul_overflow(value, Factor(), &value)) Fail(ArithmeticResult::OutOfRange);
            } else if (Take('/')) {
                value = Divide(value, Factor(), false);
            } else if (Take('%')) {
                value = Divide(value, Factor(), true);
            } else {
                break;
            }
        }
        return value;
    }

    std::int64_t Divide(std::int64_t value, std::int64_t by, bool rest) {
        if (by == 0 || (by == -1 && value == std::numeric_limits<std::int64_t>::min())) {
            Fail(ArithmeticResult::OutOfRange);
            return 0;
        }
        return rest ? value % by : value / by;
    }

    std::int64_t Factor() {
        bool negative = false;
        while (Take('-')) negative = !negative;
        std::int64_t value = Take('(') ? Parenthesis() : Operand();
        if (negative && __builtin_sub_overflow(std::int64_t{0}, value, &value))
            Fail(ArithmeticResult::OutOfRange);
        return value;
    }

    std::int64_t Parenthesis() {
        if (++depth_ > Limits::Nesting) {
            Fail(ArithmeticResult::NotOne);
            return 0;
        }
        const std::int64_t value = Sum();
        --depth_;
        if (!Take(')')) Fail(ArithmeticResult::NotOne);
        return value;
    }

    std::int64_t Operand() {
        const std::string_view word = FirstWord(text_.substr(at_));
        Skip();
        at_ += word.size();
        if (word.empty()) Fail(ArithmeticResult::NotOne);
        for (const auto& [name, bound] : names_)
            if (name == word) return bound;
        std::int64_t value = 0;
        for (char c : word) {
            if (c < '0' || c > '9') {
                Fail(ArithmeticResult::NotOne);
                return 0;
            }
            if (value > (std::numeric_limits<std::int64_t>::max() - 9) / 10) {
                Fail(ArithmeticResult::OutOfRange);
                return 0;
            }
            value = value * 10 + (c - '0');
        }
        return value;
    }

    std::string_view text_;
    const Bindings& names_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    ArithmeticResult result_ = ArithmeticResult::Ok;
};

}  // namespace

ArithmeticResult Evaluate(std::string_view text, const Bindings& names, std::int64_t& value) {
    return Evaluator(text, names).Run(value);
}

}  // namespace front
