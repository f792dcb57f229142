#pragma once

#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "front/Analysis.h"
#include "front/Names.h"

namespace front {

// A statement that makes no sense any further; the fault is reported already.
struct MeaningFault {};

// The value of an expression: one bit, one bit a member of a list, or a number that has not met a list yet.
struct Value {
    std::vector<NodeId> Bits;
    std::vector<int> Weights;  // of a list's members, by which a constant meets them
    bool List = false;
    std::int32_t Constant = -1;  // index into Syntax::Constants

    static Value Bit(NodeId node) { return {{node}, {0}, false, -1}; }
};

// Turns expressions into gates.
class Elaborator {
  public:
    Elaborator(const Syntax& syntax, Report& report, Names& names, Analysis& analysis)
        : syntax_(syntax), report_(report), names_(names), analysis_(analysis) {}

    Value Evaluate(ExprId id);
    NodeId EvaluateBit(ExprId id);  // a list is an error
    // The value met by a target of these weights: one bit each, a single bit for every member.
    std::vector<NodeId> Spread(const Value& value, const std::vector<int>& weights, bool list, Place at);

    // The members of a list as they stand on the right side.
    Value List(ExprId names);
    // members : constant, members : [low..high]
    NodeId Equals(const Value& members, std::int32_t constant, Place at);
    NodeId InRange(const Value& members, std::int32_t low, std::int32_t high, Place at);

    NodeId SignalNode(int variable, bool pin);
    // Warns of a 1 at a weight that no member has.
    void CheckOutside(const Constant& constant, const std::vector<int>& weights, Place at);

    [[noreturn]] void Fail(Code code, Place at, std::string_view detail = {});

    std::map<std::string_view, const FunctionStatement*> Functions;

  private:
    using Environment = std::vector<std::pair<std::string_view, Value>>;

    const Expr& Of(ExprId id) const { return syntax_.Exprs[static_cast<std::size_t>(id)]; }
    const Constant& ConstantOf(std::int32_t id) const {
        return syntax_.Constants[static_cast<std::size_t>(id)];
    }
    std::vector<Value> Kids(const Expr& expr);
    Value NameValue(const Expr& expr);
    NodeId Reference(const ListedName& name);
    Value Combine(const Expr& expr, const std::vector<Value>& kids);
    NodeId Gate(Op what, const std::vector<NodeId>& kids);
    const FunctionStatement& FunctionOf(const Expr& call);
    Value Call(const Expr& expr);
    Value Fold(const Expr& expr, const Value& value);
    Value Invert(const Value& value, Place at);
    NodeId ScalarConstant(std::int32_t constant, Place at);
    const Value* Local(std::string_view name) const;
    void CheckSize(Place at);

    const Syntax& syntax_;
    Report& report_;
    Names& names_;
    Analysis& analysis_;
    std::map<std::pair<int, bool>, NodeId> signals_;
    std::vector<const FunctionStatement*> calls_;
    Environment* locals_ = nullptr;
};

}  // namespace front
