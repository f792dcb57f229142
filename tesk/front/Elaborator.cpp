#include "front/Elaborator.h"

#include <algorithm>

#include "front/Limits.h"

namespace front {

void Elaborator::Fail(Code code, Place at, std::string_view detail) {
    report_.Add(code, at, detail);
    throw MeaningFault{};
}

void Elaborator::CheckSize(Place at) {
    if (analysis_.Gates.Size() > Limits::Nodes) Fail(Code::DesignTooLarge, at, "expressions");
}

std::vector<Value> Elaborator::Kids(const Expr& expr) {
    std::vector<Value> values;
    values.reserve(expr.KidCount);
    for (std::uint32_t i = 0; i < expr.KidCount; ++i)
        values.push_back(Evaluate(syntax_.Kids[expr.FirstKid + i]));
    return values;
}

Value Elaborator::Evaluate(ExprId id) {
    const Expr& expr = Of(id);
    CheckSize(expr.At);
    switch (expr.What) {
        case Op::Name:
            return NameValue(expr);
        case Op::Number:
            return {{}, {}, false, expr.Constant};
        case Op::List:
        case Op::Span:
            return List(id);
        case Op::Not:
            return Invert(Kids(expr)[0], expr.At);
        case Op::Equals:
            return Value::Bit(Equals(Kids(expr)[0], expr.Constant, expr.At));
        case Op::InRange:
            return Value::Bit(InRange(Kids(expr)[0], expr.Constant, expr.Constant + 1, expr.At));
        case Op::Fold:
            return Fold(expr, Kids(expr)[0]);
        case Op::Call:
            return Call(expr);
        default:
            return Combine(expr, Kids(expr));
    }
}

NodeId Elaborator::EvaluateBit(ExprId id) {
    const Value value = Evaluate(id);
    if (value.Constant >= 0) return ScalarConstant(value.Constant, Of(id).At);
    if (value.List) Fail(Code::ScalarExpected, Of(id).At);
    return value.Bits[0];
}

const Value* Elaborator::Local(std::string_view name) const {
    if (locals_ == nullptr) return nullptr;
    for (auto entry = locals_->rbegin(); entry != locals_->rend(); ++entry)
        if (entry->first == name) return &entry->second;
    return nullptr;
}

Value Elaborator::NameValue(const Expr& expr) {
    if (expr.Ext == Extension::None)
        if (const Value* local = Local(expr.Text)) return *local;
    const auto symbol = names_.Find(expr.Text);
    if (symbol && symbol->Kind == SymbolKind::Field)
        return List(static_cast<ExprId>(&expr - syntax_.Exprs.data()));
    if (!symbol && expr.Constant >= 0 && expr.Ext == Extension::None) return {{}, {}, false, expr.Constant};
    return Value::Bit(Reference({std::string(expr.Text), false, expr.Ext, expr.At}));
}

Value Elaborator::List(ExprId names) {
    Value value;
    value.List = true;
    std::vector<std::string> texts;
    for (const ListedName& name : names_.Members(names)) {
        const Value* local = name.Ext == Extension::None ? Local(name.Name) : nullptr;
        if (local != nullptr && local->Bits.size() != 1) Fail(Code::ScalarExpected, name.At, name.Name);
        const NodeId node = local != nullptr ? local->Bits[0] : Reference(name);
        value.Bits.push_back(name.Inverted ? analysis_.Gates.Not(node) : node);
        texts.push_back(name.Name);
    }
    if (value.Bits.empty()) throw MeaningFault{};
    value.Weights = WeightsOf(texts);
    return value;
}

NodeId Elaborator::SignalNode(int variable, bool pin) {
    const auto [entry, fresh] = signals_.try_emplace({variable, pin}, Network::zero);
    if (fresh) {
        std::vector<Signal>& signals = analysis_.Result.Signals;
        entry->second = analysis_.Gates.Signal(static_cast<std::uint32_t>(signals.size()));
        signals.push_back({variable, pin});
    }
    return entry->second;
}

NodeId Elaborator::Reference(const ListedName& name) {
    const auto symbol = names_.Find(name.Name);
    if (!symbol) {
        if (name.Name == "NC") return Network::noConnect;
        names_.ReportUnknown(name.Name, name.At);
        return Network::zero;
    }
    if (symbol->Kind == SymbolKind::Function) Fail(Code::FunctionArguments, name.At, name.Name);
    const Variable& variable = analysis_.Result.Variables[static_cast<std::size_t>(symbol->Index)];
    const std::string shown = name.Name + "." + std::string(ExtensionName(name.Ext));
    const bool registered = variable.Register != Extension::None;
    const bool fits = name.Ext == Extension::None ||
                      (name.Ext == Extension::IO && variable.Kind == VariableKind::Pin) ||
                      (name.Ext == Extension::DQ && registered);
    if (!fits) Fail(Code::BadExtension, name.At, shown + " on the right side");
    if (variable.Kind == VariableKind::Intermediate)
        return analysis_.Gates.Intermediate(static_cast<std::uint32_t>(symbol->Index));
    return SignalNode(symbol->Index, registered && name.Ext == Extension::IO);
}

NodeId Elaborator::ScalarConstant(std::int32_t constant, Place at) {
    const Constant& number = ConstantOf(constant);
    if (number.HasDontCare()) Fail(Code::DontCareMisplaced, at);
    if (number.Digits.find('1', 1) != std::string::npos) Fail(Code::ScalarConstant, at);
    return number.At(0) == '1' ? Network::one : Network::zero;
}

void Elaborator::CheckOutside(const Constant& constant, const std::vector<int>& weights, Place at) {
    for (std::size_t digit = 0; digit < constant.Digits.size(); ++digit) {
        if (constant.Digits[digit] != '1') continue;
        if (std::find(weights.begin(), weights.end(), static_cast<int>(digit)) != weights.end()) continue;
        report_.Add(Code::ConstantOutside, at, "bit " + std::to_string(digit));
        return;
    }
}

std::vector<NodeId> Elaborator::Spread(const Value& value, const std::vector<int>& weights, bool list,
                                       Place at) {
    if (value.Constant < 0) {
        if (value.List && value.Bits.size() != weights.size())
            Fail(Code::ListLengths, at,
                 std::to_string(weights.size()) + " and " + std::to_string(value.Bits.size()));
        return value.List ? value.Bits : std::vector<NodeId>(weights.size(), value.Bits[0]);
    }
    if (!list) return {ScalarConstant(value.Constant, at)};
    const Constant& number = ConstantOf(value.Constant);
    if (number.HasDontCare()) Fail(Code::DontCareMisplaced, at);
    CheckOutside(number, weights, at);
    std::vector<NodeId> bits;
    for (int weight : weights)
        bits.push_back(number.At(static_cast<std::size_t>(weight)) == '1' ? Network::one : Network::zero);
    return bits;
}

NodeId Elaborator::Gate(Op what, const std::vector<NodeId>& kids) {
    if (what == Op::And) return analysis_.Gates.And(kids);
    return what == Op::Or ? analysis_.Gates.Or(kids) : analysis_.Gates.Xor(kids);
}

Value Elaborator::Combine(const Expr& expr, const std::vector<Value>& kids) {
    Value result = Value::Bit(Network::zero);
    for (const Value& kid : kids) {
        if (!kid.List || result.List) continue;
        result.List = true;
        result.Weights = kid.Weights;
    }
    std::vector<std::vector<NodeId>> bits;
    for (const Value& kid : kids) bits.push_back(Spread(kid, result.Weights, result.List, expr.At));
    result.Bits.clear();
    std::vector<NodeId> column(kids.size());
    for (std::size_t i = 0; i < result.Weights.size(); ++i) {
        for (std::size_t k = 0; k < kids.size(); ++k) column[k] = bits[k][i];
        result.Bits.push_back(Gate(expr.What, column));
    }
    return result;
}

Value Elaborator::Invert(const Value& value, Place at) {
    if (value.Constant >= 0) return Value::Bit(analysis_.Gates.Not(ScalarConstant(value.Constant, at)));
    Value result = value;
    for (NodeId& bit : result.Bits) bit = analysis_.Gates.Not(bit);
    return result;
}

Value Elaborator::Fold(const Expr& expr, const Value& value) {
    if (value.Constant >= 0) Fail(Code::ScalarConstant, expr.At);
    const Op what = expr.Sign == '&' ? Op::And : expr.Sign == '#' ? Op::Or : Op::Xor;
    return Value::Bit(Gate(what, value.Bits));
}

const FunctionStatement& Elaborator::FunctionOf(const Expr& call) {
    const auto entry = Functions.find(call.Text);
    if (entry == Functions.end()) {
        names_.ReportUnknown(call.Text, call.At);
        throw MeaningFault{};
    }
    const FunctionStatement& function = *entry->second;
    if (call.KidCount != function.Parameters.size())
        Fail(Code::FunctionArguments, call.At,
             std::string(call.Text) + " takes " + std::to_string(function.Parameters.size()) + ", got " +
                 std::to_string(call.KidCount));
    const bool again = std::find(calls_.begin(), calls_.end(), &function) != calls_.end();
    if (again || calls_.size() >= Limits::CallDepth) Fail(Code::FunctionDepth, call.At, call.Text);
    return function;
}

Value Elaborator::Call(const Expr& expr) {
    const FunctionStatement& function = FunctionOf(expr);
    Environment values;
    for (std::uint32_t i = 0; i < expr.KidCount; ++i)
        values.emplace_back(function.Parameters[i], Evaluate(syntax_.Kids[expr.FirstKid + i]));
    Environment* const outer = std::exchange(locals_, &values);
    calls_.push_back(&function);
    try {
        for (const EquationStatement& equation : function.Body) {
            Value value = Evaluate(equation.Value);
            values.emplace_back(Of(equation.To.Names).Text,
                                equation.To.Complement ? Invert(value, equation.At) : std::move(value));
        }
    } catch (...) {
        calls_.pop_back();
        locals_ = outer;
        throw;
    }
    calls_.pop_back();
    const Value* result = Local(function.Name);
    locals_ = outer;
    if (result == nullptr) Fail(Code::FunctionArguments, expr.At, std::string(expr.Text) + " gets no value");
    return *result;
}

}  // namespace front
