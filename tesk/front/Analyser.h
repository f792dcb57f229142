#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "front/Elaborator.h"

// Inside the analysis.
namespace front {

// A member of a target: variable, extension, and whether the equation gives its complement.
struct Slot {
    int Variable = -1;  // -1: "no connection", dropped
    Extension To = Extension::None;
    bool Complement = false;
    Place At;
};

// The kind of register that has this input: J for J and K, R for S and R.
Extension RegisterOf(Extension input);

class Analyser {
  public:
    Analyser(const Syntax& syntax, const Options& options, Report& report, Analysis& analysis)
        : syntax_(syntax),
          options_(options),
          report_(report),
          analysis_(analysis),
          names_(syntax, analysis.Result, report),
          elaborator_(syntax, report, names_, analysis) {}

    void Run();

  private:
    // What is gathered for one variable and extension.
    struct Gathered {
        bool Equation = false;  // by "="; OUT and APPEND add to what stands
        bool Complement = false;
        std::vector<NodeId> On;
        std::vector<NodeId> Off;
        std::vector<NodeId> DontCare;
        Place At;
    };

    // Declarations, in the order of the text.
    void CheckHeader();
    void Declare(const Declaration& declaration);
    void DeclareField(const FieldDeclaration& field);
    void DeclareFunction(const FunctionStatement& function);
    void FindIntermediates(const Statement& statement);
    void AddTarget(ExprId names);
    void AddRuleTargets(const std::vector<Rule>& rules);
    void NoteRegister(int variable, Extension extension);
    void ResolveField(int index, std::vector<const FieldDeclaration*>& open, std::size_t depth);
    void ResolveFields();

    // Statements, in the order of the text.
    void Elaborate(const Statement& statement);
    void Take(const EquationStatement& equation);
    void Take(const TableStatement& table);
    void Take(const MachineStatement& machine);
    void Take(const ConditionStatement& condition);
    void Take(const MinDeclaration& min);
    void Take(const FuseStatement& fuse);
    void Take(const PropertyStatement& property);
    void Take(const Declaration&) {}
    void Take(const FieldDeclaration&) {}
    void Take(const FunctionStatement&) {}

    void TakeRules(const std::vector<Rule>& rules, NodeId state, const MachineStatement* machine,
                   const State* from);
    std::vector<NodeId> RuleConditions(const std::vector<Rule>& rules, NodeId state);
    void AddTransition(const MachineStatement& machine, const State& from, const Rule& rule,
                       NodeId condition);
    void AddOut(const Target& target, NodeId condition);
    NodeId TableCondition(const TableRow& row, const Value& in);
    std::vector<Slot> MachineSlots(const MachineStatement& machine, std::vector<int>& weights, bool& list);

    void FreeInputs(const MachineStatement& machine);

    // Option "o".
    struct OneHotMachine {
        std::vector<int> Members;
        std::vector<int> Registers;
        Place At;
    };
    void TakeOneHot(const MachineStatement& machine);
    void TakeOneHotState(const MachineStatement& machine, const State& state,
                         const std::map<std::string, NodeId>& holds,
                         const std::map<std::string, int>& registers);
    int AddStateRegister(const MachineStatement& machine, const std::string& value);
    void MoveControls(const OneHotMachine& hot);

    void CheckStates(const MachineStatement& machine, const Value& field);

    std::vector<Slot> Slots(const Target& target, std::vector<int>* weights, bool* list);
    Gathered& At(int variable, Extension to, Place at);
    Gathered& Fresh(const Slot& slot);  // reports a second equation
    void Finish();
    void FinishOne(int variable, Extension to, const Gathered& gathered);
    void SortSignals();
    void CheckRegisters();
    void BuildFromD();
    void BuildFromD(int variable, bool isComplex);
    void CheckUse();

    const Syntax& syntax_;
    const Options& options_;
    Report& report_;
    Analysis& analysis_;
    Names names_;
    Elaborator elaborator_;
    std::map<std::pair<int, Extension>, Gathered> gathered_;
    std::vector<int> fieldsInWork_;
    std::vector<OneHotMachine> oneHots_;
    std::map<int, Place> pins_;
    std::vector<std::pair<int, Extension>> fieldTargets_;
};

}  // namespace front
