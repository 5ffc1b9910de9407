#ifndef ProcessorTime_H
#define ProcessorTime_H

#include <ctime>

/** Measures the processor time that this process takes, so that what else the machine does is no matter. */
class ProcessorTime {
public:
    /** More than linear work on the large inputs of the tests takes, much less than quadratic work does. */
    static constexpr double kQuick = 20;

    /** The seconds since this object was built. */
    double Seconds() const { return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC; }

private:
    std::clock_t start = std::clock();
};

#endif
