#include "logic/Polish.h"

#include "logic/Expand.h"

namespace logic {

namespace {

void DropOutputs(Cover& terms, const Problem& problem, Budget& budget) {
    const Layout& layout = terms.Form();
    RegionSearch search(layout, budget);
    std::vector<Word> part(static_cast<std::size_t>(layout.Words()));
    CubeList others;
    for (std::size_t i = 0; i < terms.Size(); ++i) {
        if (layout.OutputCount(terms[i]) < 2) continue;
        others = CubesOf(problem.DontCare);
        for (std::size_t k = 0; k < terms.Size(); ++k)
            if (k != i && layout.Meet(terms[k], terms[i])) others.push_back(terms[k]);
        if (!budget.Spend(terms.Size() / 4 + 1)) return;
        for (int o = 0; o < layout.Outputs() && layout.OutputCount(terms[i]) > 1; ++o) {
            if (!layout.Output(terms[i], o)) continue;
            std::copy_n(terms[i], layout.InputWords(), part.begin());
            std::fill(part.begin() + layout.InputWords(), part.end(), Word{0});
            layout.SetOutput(part.data(), o, true);
            if (search.Covered(part.data(), others)) layout.SetOutput(terms[i], o, false);
        }
    }
}

void DropLiterals(Cover& terms, const Problem& problem, Budget& budget) {
    const Layout& layout = terms.Form();
    Expander expander(&*problem.Off, problem.On, budget);
    for (std::size_t i = 0; i < terms.Size() && !budget.Exhausted(); ++i)
        for (int v = 0; v < layout.Inputs(); ++v) {
            const Literal before = layout.Input(terms[i], v);
            if (before == Literal::Free) continue;
            layout.SetInput(terms[i], v, Literal::Free);
            if (!expander.IsImplicant(terms[i])) layout.SetInput(terms[i], v, before);
        }
}

}  // namespace

void Polish(Cover& terms, const Problem& problem, Budget& budget) {
    if (terms.Outputs() < 2) return;
    DropOutputs(terms, problem, budget);
    if (problem.Off) DropLiterals(terms, problem, budget);
}

}  // namespace logic
