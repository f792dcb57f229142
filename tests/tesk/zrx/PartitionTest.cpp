#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "base/PosixFile.h"
#include "base/Text.h"
#include "sim/Machine.h"
#include "tesk/front/Support.h"
#include "zrx/Input.h"
#include "zrx/PldFile.h"

namespace {

using sim::Value;

const zrx::GoOn always = [] { return true; };

std::string ShippedLibrary() { return base::ReadWhole(ZRX_DIR "/zrxlib.db", zrx::DatabaseLimits::FileBytes); }

// The design T in memory, and the calls of the partitioner on it.
struct Desk {
    MemoryFiles Files;
    std::vector<std::string> Lines;
    std::vector<std::string> Listed;

    Desk(const std::string& design, const std::string& devices) {
        Files.Texts = Compile(design, "axm1")->Files.Texts;
        Files.Texts["Z/zrxlib.db"] = ShippedLibrary();
        Files.Texts["Z/temp.dev"] = devices;
    }

    zrx::Call Call(const std::string& letters, const std::string& deviceFile = "Z/temp.dev") {
        return {Files,
                "T",
                deviceFile,
                "Z/",
                zrx::Options::Parse(letters),
                [this](const std::string& line) { Lines.push_back(line); },
                [this](const std::string& line) { Listed.push_back(line); },
                always};
    }
    bool Said(const std::string& part) const {
        return std::any_of(Lines.begin(), Lines.end(),
                           [&](const std::string& line) { return line.find(part) != line.npos; });
    }
    void Choose(const std::string& entry) {
        Files.Texts["Z/solution.slf"] = entry.substr(0, 60) + "\r\n";
        zrx::WriteSolution(Call("-rjof", "Z/solution.slf"));
    }
};

// Outputs of random sums over inputs and other outputs, some of them registers (reset by RES at a clock, or
// at once), nodes, active-low.
std::string RandomDesign(unsigned seed, int inputs, int outputs, int terms, int width, bool atOnce = true) {
    std::mt19937 random(seed);
    std::ostringstream text;
    text << "PIN = CLK; PIN = !RES; PIN = [I" << inputs - 1 << "..0];";
    for (int i = 0; i < outputs; ++i)
        text << (i % 7 == 3 ? "NODE" : "PIN =") << (i % 5 == 2 && i % 7 != 3 ? " !" : " ") << "Y" << i << ";";
    for (int i = 0; i < outputs; ++i) {
        const bool isRegister = i % 3 == 1;
        if (isRegister)
            text << "Y" << i << ".CK = CLK;" << (atOnce ? "Y" + std::to_string(i) + ".AR = RES;" : "");
        text << "\nY" << i << (isRegister ? ".D" : "") << " = ";
        for (int term = 0; term < terms; ++term) {
            text << (term > 0 ? "\n# " : "") << (isRegister && !atOnce ? "!RES & " : "");
            for (int k = 0; k < 4; ++k) {
                // Reads of lower outputs make no loop; the inputs lie near, so that outputs share them.
                const bool other = k == 3 && i > 0 && random() % 2 == 0;
                const int from = other ? static_cast<int>(random() % i)
                                       : (i + static_cast<int>(random() % width)) % inputs;
                text << (k > 0 ? " & " : "") << (random() % 2 ? "!" : "") << (other ? "Y" : "I") << from;
            }
        }
        text << ";";
    }
    return text.str();
}

// A compiled design with its pins' levels.
class Board {
  public:
    explicit Board(const std::string& abs) : design_(sim::ReadAbs(abs).Design), machine_(design_) {}

    void Drive(const std::string& name, Value level) {
        const int net = Find(name);
        if (net >= 0 && design_.Nets[net].Kind == sim::NetKind::Input) machine_.Apply({{net, level}});
    }
    Value Level(const std::string& name) const { return machine_.Level(Find(name)); }
    // The names of its outputs.
    std::vector<std::string> Outputs() const {
        std::vector<std::string> names;
        for (const sim::Net& net : design_.Nets)
            if (net.Kind == sim::NetKind::Output || net.Kind == sim::NetKind::Bidirectional)
                names.push_back(net.Name);
        return names;
    }

  private:
    int Find(const std::string& name) const {
        for (std::size_t i = 0; i < design_.Nets.size(); ++i)
            if (design_.Nets[i].Name == name) return static_cast<int>(i);
        return -1;
    }
    const sim::AbsDesign design_;
    sim::Machine machine_;
};

// The chips wired by the names of their nets.
class Boards {
  public:
    void Add(const std::string& abs) {
        boards_.push_back(std::make_unique<Board>(abs));
        for (const std::string& name : boards_.back()->Outputs()) driver_[name] = boards_.back().get();
    }
    void Drive(const std::string& name, Value level) {
        for (auto& board : boards_) board->Drive(name, level);
        for (std::size_t round = 0; round <= driver_.size(); ++round)
            for (auto& [net, from] : driver_)
                for (auto& board : boards_) board->Drive(net, from->Level(net));
    }
    Value Level(const std::string& name) const {
        return driver_.contains(name) ? driver_.at(name)->Level(name) : Value::HighZ;
    }

  private:
    std::vector<std::unique_ptr<Board>> boards_;
    std::map<std::string, Board*> driver_;
};

// Compiles every chip's design for its device and compares the whole with the original, by random vectors.
void ExpectSame(const Desk& desk, int inputs, unsigned seed, const std::string& letters) {
    ASSERT_TRUE(desk.Files.Texts.contains("T.ABS"));
    Board one(desk.Files.Texts.at("T.ABS"));
    Boards all;
    const std::string library = base::ReadWhole(FULLSET_DL, fit::LibraryLimits::FileBytes);
    for (int chip = 1; desk.Files.Texts.contains("T_" + std::to_string(chip) + ".PLD"); ++chip) {
        const auto compiled = CompileWhole(desk.Files.Texts.at("T_" + std::to_string(chip) + ".PLD"), letters,
                                           {{"tesk.dl", library}});
        ASSERT_TRUE(compiled->Run->Ok()) << compiled->Lines().front();
        ASSERT_TRUE(compiled->Files.Texts.contains("T.ABS")) << ::testing::PrintToString(compiled->Lines());
        all.Add(compiled->Text(".ABS"));
    }
    std::mt19937 random(seed);
    const auto drive = [&](const std::string& name, Value level) {
        one.Drive(name, level);
        all.Drive(name, level);
    };
    drive("CLK", Value::Zero);
    for (int i = 0; i < inputs; ++i) drive("I" + std::to_string(i), Value::Zero);
    drive("RES", Value::Zero);
    for (const Value level : {Value::One, Value::Zero}) drive("CLK", level);
    drive("RES", Value::One);
    for (int step = 0; step < 60; ++step) {
        drive("I" + std::to_string(random() % inputs), random() % 2 ? Value::One : Value::Zero);
        if (step % 3 == 2)
            for (const Value level : {Value::One, Value::Zero}) drive("CLK", level);
        for (const std::string& name : one.Outputs())
            ASSERT_EQ(all.Level(name), one.Level(name)) << name << " step " << step << " seed " << seed;
    }
}

// The least number of chips by trying every way to part the items, each set of them asked of the fitter.
class Exhaustion {
  public:
    explicit Exhaustion(const zrx::Problem& problem) : problem_(problem) {}

    std::size_t Least() {
        while (!Parts(0, ++most_)) chips_.clear();
        return most_;
    }

  private:
    // Whether the items from one on can be put on so many chips.
    bool Parts(std::size_t item, std::size_t most) {
        if (item == problem_.Items())
            return std::all_of(chips_.begin(), chips_.end(), [&](const zrx::Set& set) { return Fits(set); });
        for (std::size_t i = 0; i <= chips_.size() && i < most; ++i) {
            const bool isNew = i == chips_.size();
            if (isNew) chips_.emplace_back();
            chips_[i].push_back(item);
            if (Parts(item + 1, most)) return true;
            chips_[i].pop_back();
            if (isNew) chips_.pop_back();
        }
        return false;
    }
    bool Fits(const zrx::Set& set) {
        const auto [at, isNew] = known_.emplace(set, false);
        for (std::size_t i = 0; isNew && i < problem_.Candidates().size() && !at->second; ++i) {
            const fit::Fit fit = problem_.Place(set, i).Fit;
            at->second = fit.Ok() && fit.Implied.empty();
        }
        return at->second;
    }

    const zrx::Problem& problem_;
    std::size_t most_ = 0;
    std::vector<zrx::Set> chips_;
    std::map<zrx::Set, bool> known_;
};

std::unique_ptr<zrx::Problem> ProblemOf(Desk& desk) {
    const zrx::Call call = desk.Call("");
    const auto database = *zrx::LoadDatabase(call);
    return zrx::MakeProblem(call, *zrx::LoadDocument(call), database,
                            zrx::CandidatesOf(call, database, desk.Files.Texts["Z/temp.dev"]), 0);
}

}  // namespace

struct Case {
    const char* Devices;
    int Inputs, Outputs, Terms, Width;
    const char* Letters;
};

class Partitions : public ::testing::TestWithParam<Case> {};

// What the written designs compute together is what the design computes, compiled with little or much effort.
TEST_P(Partitions, ComputeWhatTheDesignComputes) {
    const Case& at = GetParam();
    for (unsigned seed = 1; seed <= 2; ++seed) {
        Desk desk(
            RandomDesign(seed, at.Inputs, at.Outputs, at.Terms, at.Width, base::Contains(at.Devices, "22V")),
            at.Devices);
        ASSERT_GT(zrx::FindSolutions(desk.Call(at.Letters)), 0u) << ::testing::PrintToString(desk.Lines);
        zrx::ListSolutions(desk.Call(at.Letters));
        desk.Choose(desk.Listed[desk.Listed.size() * (seed - 1) / 2]);
        ASSERT_TRUE(desk.Files.Texts.contains("T_1.PLD")) << ::testing::PrintToString(desk.Lines);
        for (const char* letters : {"am1", "am4kb"}) ExpectSame(desk, at.Inputs, seed, letters);
    }
}

INSTANTIATE_TEST_SUITE_P(Devices, Partitions,
                         ::testing::Values(Case{"G22V10", 14, 24, 5, 6, "a1m099"},
                                           Case{"G22V10\nP22V10", 30, 40, 7, 10, "a2m099"},
                                           Case{"G16V8A", 12, 16, 3, 5, "a1m099"},
                                           Case{"G20V8\nP16R4\nP16R8\nP16L8", 8, 12, 2, 4, "a1m099"},
                                           Case{"G16V8A", 10, 9, 11, 8, "a1sm099"},
                                           Case{"P18CV8\nF153", 8, 12, 3, 4, "a1m099"},
                                           Case{"G22V10", 14, 24, 5, 6, "a1m099u060"}));

// Up to ten outputs nothing is better; beyond, first fit decreasing never is.
TEST(Search, HasTheLeastChips) {
    for (unsigned seed = 1; seed <= 2; ++seed)
        for (const char* devices : {"G16V8A", "G22V10\nP16L8\nP16R8"}) {
            Desk desk(RandomDesign(seed, 16, seed == 1 ? 10 : 8, 3, 12, false), devices);
            const auto problem = ProblemOf(desk);
            const auto found = zrx::Search(*problem, zrx::Options::Parse("m099l001N1c2p3"), always);
            ASSERT_FALSE(found.Solutions.empty()) << devices << seed << ::testing::PrintToString(desk.Lines);
            EXPECT_EQ(found.Solutions.front().Chips.size(), Exhaustion(*problem).Least()) << devices << seed;
        }
    for (unsigned seed = 1; seed <= 3; ++seed) {
        Desk desk(RandomDesign(seed, 20 + 2 * static_cast<int>(seed), 50, 6, 12), "G22V10");
        const auto problem = ProblemOf(desk);
        const auto decreasing = zrx::FirstFitDecreasing(*problem, {0}, always);
        const auto found = zrx::Search(*problem, zrx::Options::Parse("a1m099l001"), always);
        ASSERT_TRUE(decreasing && !found.Solutions.empty());
        EXPECT_LE(found.Solutions.front().Chips.size(), decreasing->size()) << seed;
    }
}

// However soon the time is over, the search ends and what it has is whole.
TEST(Search, EndsByItsLimits) {
    Desk desk(RandomDesign(5, 20, 40, 5, 8, false), "G22V10\nG20V8A\nG16V8A");
    for (const int calls : {0, 1, 100, 3000}) {
        const auto problem = ProblemOf(desk);
        int left = calls;
        const auto found = zrx::Search(*problem, zrx::Options::Parse("m099"), [&] { return left-- > 0; });
        EXPECT_EQ(found.Why, zrx::Ending::Time);
        for (const zrx::Solution& solution : found.Solutions)
            EXPECT_TRUE(zrx::Restore(*problem, zrx::Keep(*problem, solution)));
    }
    EXPECT_EQ(zrx::FindSolutions(desk.Call("m099l002")), 2u);
    EXPECT_TRUE(desk.Said("its limit of 2 solutions"));
    EXPECT_EQ(zrx::FindSolutions(desk.Call("m001")), 0u);
    EXPECT_TRUE(desk.Said("the options allow 1."));
}

// A second search in one opening of the dialog has the chosen solution for its devices; "h" takes up the last
// one.
TEST(Search, GoesOnFromWhatIsKept) {
    Desk desk(RandomDesign(3, 14, 24, 5, 6, false), "G22V10\nG20V8");
    const std::size_t count = zrx::FindSolutions(desk.Call("a1m099d"));
    ASSERT_GT(count, 0u);
    EXPECT_EQ(zrx::FindSolutions(desk.Call("hm099")), count);
    EXPECT_TRUE(desk.Said("solutions of the last search"));
    zrx::ListSolutions(desk.Call(""));
    ASSERT_EQ(desk.Listed.size(), count);
    EXPECT_EQ(base::Lines(desk.Files.Texts.at("T.SOL")).size(), count + 1);
    desk.Choose(desk.Listed.front());
    EXPECT_GT(zrx::FindSolutions(desk.Call("-rjof", "Z/solution.slf")), 0u);
    EXPECT_NE(desk.Files.Texts.at("T.ZRP").find("Chip 2: G2"), std::string::npos);
}

// Each fault is told in a line that names it, and nothing is written.
TEST(Search, TellsWhatItCannotUse) {
    const std::string design = RandomDesign(1, 8, 6, 3, 4);
    using Change = std::function<void(std::map<std::string, std::string>&)>;
    const auto database = [](auto change) { return [change](auto& texts) { change(texts["Z/zrxlib.db"]); }; };
    const std::vector<std::pair<Change, const char*>> cases{
        {[](auto& texts) { texts.erase("T.DOC"); }, "T.DOC cannot be read"},
        {[](auto& texts) { texts["T.DOC"].resize(900); }, "it has no part"},
        {[](auto& texts) { texts["T.PLD"] = "Name Other ;"; }, "is of the design T, not of Other"},
        {[](auto& texts) { texts["Z/temp.dev"].clear(); }, "There is no candidate device"},
        {[](auto& texts) { texts["Z/temp.dev"] = "EP900\r\nF100\r\nX9\r\n"; },
         "EP900 is left out: its limits are not known"},
        {[](auto& texts) { texts["Z/temp.dev"] = "P10L8 X9"; }, "X9 is left out: it is not in"},
        {[](auto& texts) { texts.erase("Z/zrxlib.db"); }, "zrxlib.db cannot be read"},
        {database([](std::string& bytes) { bytes.resize(3); }), "its count of devices is wrong"},
        {database([](std::string& bytes) { bytes[1] = '\x7f'; }), "its count of devices is wrong"},
        {database([](std::string& bytes) { bytes.resize(bytes.size() - 5); }), "is damaged"},
        {database([](std::string& bytes) { bytes.replace(4, 20, std::string(20, 'A')); }),
         "a name without its end"}};
    for (const auto& [change, line] : cases) {
        Desk desk(design, "G22V10");
        change(desk.Files.Texts);
        const auto before = desk.Files.Texts;
        EXPECT_EQ(zrx::FindSolutions(desk.Call("a1m099")), 0u) << line;
        EXPECT_TRUE(desk.Said(line)) << ::testing::PrintToString(desk.Lines);
        EXPECT_EQ(desk.Files.Texts, before) << line;
    }
    for (const auto& [text, line] : std::map<std::string, const char*>{
             {"PIN = [A3..0]; PIN = [Y, WIDE]; Y = A0; WIDE = A0 $ A1 $ A2 $ A3;",
              "WIDE fits no candidate (P16L8: "},
             {"PIN = [A, C]; PIN = Q; Q.T = A; Q.CK = C;", "Q fits no candidate"},
             {"PIN = A; PIN = Q; Q.D = A;", "The register Q has no clock"}}) {
        Desk desk(text, "P16L8");
        EXPECT_EQ(zrx::FindSolutions(desk.Call("a1")), 0u);
        EXPECT_TRUE(desk.Said(line)) << ::testing::PrintToString(desk.Lines);
    }
}

// A design of the user's that bears a chip's name stays, and an entry of another search is refused.
TEST(Writing, OverwritesNothingOfTheUsers) {
    Desk desk(RandomDesign(1, 14, 24, 5, 6), "G22V10");
    ASSERT_GT(zrx::FindSolutions(desk.Call("a1m099")), 0u);
    zrx::ListSolutions(desk.Call(""));
    desk.Files.Texts["T_2.PLD"] = "Name Mine ;";
    desk.Choose(desk.Listed.front());
    EXPECT_TRUE(desk.Said("T_2.PLD was not written by the partitioner"));
    EXPECT_EQ(desk.Files.Texts["T_2.PLD"], "Name Mine ;");
    EXPECT_FALSE(desk.Files.Texts.contains("T_1.PLD"));
    desk.Choose("G22V10*99");
    EXPECT_TRUE(desk.Said("is no solution of the last search"));
    desk.Files.Texts["T.DOC"] = Compile(RandomDesign(2, 14, 25, 5, 6), "xm1")->Text(".DOC");
    desk.Choose(desk.Listed.front());
    EXPECT_TRUE(desk.Said("was changed since the last search"));
}
