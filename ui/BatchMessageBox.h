#pragma once
// The message boxes of a batch export: nobody is there to answer, so each box takes its default
// answer. Its caption and text are printed so that the decision stays visible in the batch log.

#include <cstdio>

#include "ui/VMessageBox.h"

class BatchMessageBox final : public VMessageBox {
public:
    explicit BatchMessageBox(std::FILE* out);

    // Prints "<caption>: <text>", or the text alone when it already begins with the caption, with
    // native line ends, ending in one line end.
    VMessageBoxAnswer Show(const VMessageBoxRequest& request) override;

private:
    std::FILE* m_out;
};
