#ifndef TraceSink_H
#define TraceSink_H

namespace TraceSink {

/** Whether this thread is in the sink at present: what it traces there is dropped. */
bool IsRunning() noexcept;

}  // namespace TraceSink

#endif
