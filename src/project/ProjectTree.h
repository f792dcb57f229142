#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace project {

inline constexpr int imageSource = 1;  // of imlTree: the root and the sources of a design
inline constexpr int imageFile = 2;

struct TreeNode {
    std::string Key;         // "r" for the root, else what stands behind the design's name and point on disk
    std::string Text;        // the design's base path for the root, else the name of the file
    int Image = imageFile;   // in imlTree, from 1
    std::size_t Parent = 0;  // index in the tree; of the root its own
};

// What frmProject shows: the root first, every other node behind its parent. All nodes stand expanded, the
// last one in view.
using ProjectTree = std::vector<TreeNode>;

// The files of a design (folder and base name; empty: the root alone) as they lie in its folder. A file whose
// parent (the design itself, or its simulator input) is missing is left out.
ProjectTree ReadProjectTree(const platform::FileSystem& files, const std::string& design);

// The caption of frmProject.
std::string ProjectCaption(const std::string& design);

// The path behind a node, empty for the root.
std::string ProjectFileOf(const ProjectTree& tree, std::size_t node);

}  // namespace project
