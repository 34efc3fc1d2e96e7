#pragma once

#include <vector>

namespace standin {

// The skin weights of one geometry, sparse as Maya's weightList holds them: vertex v has the pairs from Starts[v] up
// to Starts[v + 1], each an influence (its logical index in the skin cluster's "matrix") and a weight.
struct SkinWeights {
  // Declared, so that a braced list of rows is never taken for one.
  SkinWeights() = default;

  std::vector<unsigned int> Starts{0};
  std::vector<unsigned int> Influences;
  std::vector<double> Weights;

  unsigned int VertexCount() const { return static_cast<unsigned int>(Starts.size() - 1); }
  // Adds a pair to the vertex being filled; EndVertex closes it and starts the next.
  void Add(unsigned int influence, double weight)
  {
    Influences.push_back(influence);
    Weights.push_back(weight);
  }
  void EndVertex() { Starts.push_back(static_cast<unsigned int>(Influences.size())); }
  // Starts rise from 0 to the number of pairs.
  bool IsWellFormed() const;

  // One row per vertex, one column per influence; zero weights are left out.
  static SkinWeights FromRows(const std::vector<std::vector<double>>& rows);
};

}
