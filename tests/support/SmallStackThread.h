#ifndef SmallStackThread_H
#define SmallStackThread_H

#include <exception>
#include <functional>
#include <pthread.h>
#include <stdexcept>
#include <utility>

/** Runs work on a thread with a stack of 128 KB and waits for its end; what the work throws is thrown here. */
class SmallStackThread {
public:
    static void Run(std::function<void()> iWork) {
        SmallStackThread thread(std::move(iWork));
        pthread_attr_t attributes;
        pthread_t handle;
        pthread_attr_init(&attributes);
        const bool started = pthread_attr_setstacksize(&attributes, kStackSize) == 0 &&
                             pthread_create(&handle, &attributes, &SmallStackThread::Main, &thread) == 0;
        pthread_attr_destroy(&attributes);
        if (!started) {
            throw std::runtime_error("no thread with a small stack");
        }
        pthread_join(handle, nullptr);
        if (thread.failure) {
            std::rethrow_exception(thread.failure);
        }
    }

private:
    static constexpr std::size_t kStackSize = 128 * 1024;

    explicit SmallStackThread(std::function<void()> iWork) : work(std::move(iWork)) {}

    static void* Main(void* iThread) {
        auto& self = *static_cast<SmallStackThread*>(iThread);
        try {
            self.work();
        } catch (...) {
            self.failure = std::current_exception();
        }
        return nullptr;
    }

    std::function<void()> work;
    std::exception_ptr failure;
};

#endif
