#ifndef Commands_H
#define Commands_H

namespace CLI {
class App;
}

/** What the process leaves behind for who called it. */
enum ExitStatus { kDone = 0, kWrongInput = 1, kWrongUsage = 2 };

/**
 * Each of these adds one command to the command line: its options, its help, and as its callback the work. The callback
 * runs when the command line has been read without an error. It throws Failure for an input that is not as it should be
 * or an output that cannot be written; a status other than kDone without a message goes to @p oStatus.
 */
void AddExportCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddImportCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddConvertCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddCheckCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddConfigCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddUrlCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddDiffCommand(CLI::App& ioApp, ExitStatus& oStatus);
void AddGraphCommand(CLI::App& ioApp, ExitStatus& oStatus);

#endif
