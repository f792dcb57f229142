#pragma once

#include <string>
#include <vector>

#include "cpld/ReadBack.h"
#include "proof/Prove.h"

namespace cpld {

// A design and a device as the prover compares them: unnamed macrocells and foldbacks are put into what reads
// them, a register whose pin has a macrocell of its own is at that pin, and a clock enable that no macrocell
// has a term for is in the data.
struct ProofView {
    proof::Equations Design;
    proof::Chip Chip;
    std::vector<std::string> TooLarge;  // names whose functions could not be put together

    proof::Verdict Prove() const;
};

// The places of nodes are macrocells, from 1; there they become those of the chip.
ProofView ViewForProof(proof::Equations design, const ChipOfParts& parts);

}  // namespace cpld
