#ifndef Batch_H
#define Batch_H

#include "Commands.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/** What became of an input. */
struct Converted {
    std::string bytes;                  ///< the output
    std::vector<std::string> warnings;  ///< what was lost, a message each
    std::string failure;                ///< what is wrong although there is an output; empty as a rule
};

/** Inputs of which each gives an output. */
struct Batch {
    std::vector<std::string> inputs;    ///< "-" for the standard input
    std::optional<std::string> output;  ///< the file for one input, or the folder
    int jobs = 1;                       ///< how many processes work at a time
    std::optional<std::string> config;  ///< the property file or its folder, which is not to be overwritten either
};

/**
 * Turns each input into its output.
 *
 * One input goes to the standard output, or the file or folder that the batch names. Several go to a folder, one file
 * each, named after the input; what goes wrong with one is told, the rest is done all the same, and a summary follows.
 *
 * @param iEnding of the names of the output files in a folder
 * @param iConvert reads and converts an input; throws Failure
 * @return kDone, or kWrongInput when any of several has failed.
 * @throw Failure when the one input or the folder fails; CLI::ValidationError when the outputs of two inputs would be
 *        the same file, or one of the inputs, before anything is written.
 */
ExitStatus RunBatch(const Batch& iBatch, const std::string& iEnding,
                    const std::function<Converted(const std::string& iInput)>& iConvert);

#endif
