#include "Inputs.h"

#include <BexXMLParser.h>
#include <QorWflActivityToXml.h>
#include <QorWflXmlToActivity.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/resource.h>

/**
 * Tells the memory at the peak of writing or reading one document. `qorwflpeak write SIZE` and `qorwflpeak read FILE`
 * print the bytes of the document, the most that the call held at a time of what it took from the allocator, and by how
 * much the resident memory of the process grew (which means nothing for a small document). What the caller held before
 * does not count. `qorwflpeak document SIZE` prints a document to read.
 */

// The allocator's own functions, behind counting ones that take their place in the whole process.
extern "C" {
void* __libc_malloc(std::size_t);                 // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t, std::size_t);    // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void*, std::size_t);         // NOLINT(bugprone-reserved-identifier)
void* __libc_memalign(std::size_t, std::size_t);  // NOLINT(bugprone-reserved-identifier)
void __libc_free(void*);                          // NOLINT(bugprone-reserved-identifier)
}

namespace {

std::atomic<long> held{0};
std::atomic<long> peak{0};

void* Counted(void* iBlock) {
    if (iBlock != nullptr) {
        const long now = held += static_cast<long>(malloc_usable_size(iBlock));
        if (now > peak) {
            peak = now;
        }
    }
    return iBlock;
}

void Uncount(void* iBlock) {
    if (iBlock != nullptr) {
        held -= static_cast<long>(malloc_usable_size(iBlock));
    }
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t iSize) noexcept {
    return Counted(__libc_malloc(iSize));
}
void* calloc(std::size_t iCount, std::size_t iSize) noexcept {
    return Counted(__libc_calloc(iCount, iSize));
}
void* realloc(void* iBlock, std::size_t iSize) noexcept {
    const std::size_t before = iBlock == nullptr ? 0 : malloc_usable_size(iBlock);
    void* block = __libc_realloc(iBlock, iSize);
    if (block != nullptr || iSize == 0) {
        held -= static_cast<long>(before);
        return Counted(block);
    }
    return nullptr;
}
void* memalign(std::size_t iAlignment, std::size_t iSize) noexcept {
    return Counted(__libc_memalign(iAlignment, iSize));
}
void* aligned_alloc(std::size_t iAlignment, std::size_t iSize) noexcept {
    return Counted(__libc_memalign(iAlignment, iSize));
}
int posix_memalign(void** oBlock, std::size_t iAlignment, std::size_t iSize) noexcept {
    *oBlock = Counted(__libc_memalign(iAlignment, iSize));
    return *oBlock == nullptr ? ENOMEM : 0;
}
void free(void* iBlock) noexcept {
    Uncount(iBlock);
    __libc_free(iBlock);
}

}  // extern "C"
#pragma GCC visibility pop

namespace {

/** The most that was resident so far, in bytes. */
long PeakResident() {
    struct rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

/** Does the work once at a small size, so that what stays for good is there before anything is counted. */
void StartUp() {
    BexUnicodeString xml;
    QorWflActivityToXml(*Inputs::Activity(1), xml);
    ActivityInfo activity;
    QorWflXmlToActivity(xml, activity);
}

template <typename Work>
void Print(long iDocumentBytes, Work iWork) {
    const long residentBefore = PeakResident();
    const long heldBefore = held;
    peak = heldBefore;
    const long documentBytes = std::max(iDocumentBytes, iWork());
    std::printf("%ld %ld %ld\n", documentBytes, peak - heldBefore, PeakResident() - residentBefore);
}

void MeasureWriting(int iSize) {
    const std::shared_ptr<const ActivityInfo> activity = Inputs::Activity(iSize);
    Print(0, [&activity]() -> long {
        BexUnicodeString xml;
        QorWflActivityToXml(*activity, xml);
        return xml.GetLengthInChar();
    });
}

/** Reads a document out of a file, as writing it here would itself leave a peak behind. */
void MeasureReading(const char* iPath) {
    std::string text(std::filesystem::file_size(iPath), ' ');
    if (!std::ifstream(iPath, std::ios::binary).read(text.data(), static_cast<std::streamsize>(text.size()))) {
        throw std::runtime_error(std::string(iPath) + " cannot be read");
    }
    const BexUnicodeString xml = BexUnicodeString::FromNarrow(std::move(text));
    Print(xml.GetLengthInChar(), [&xml]() -> long {
        ActivityInfo activity;
        QorWflXmlToActivity(xml, activity);
        return 0;
    });
}

int WriteDocument(int iSize) {
    const std::shared_ptr<const BexUnicodeString> xml = Inputs::Document(iSize);
    const auto length = static_cast<std::size_t>(xml->GetLengthInChar());
    return std::fwrite(xml->ConvertToChar(), 1, length, stdout) == length ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string_view work = argc == 3 ? argv[1] : "";
        StartUp();
        if (work == "write") {
            MeasureWriting(std::atoi(argv[2]));
            return EXIT_SUCCESS;
        }
        if (work == "read") {
            MeasureReading(argv[2]);
            return EXIT_SUCCESS;
        }
        if (work == "document") {
            return WriteDocument(std::atoi(argv[2]));
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "qorwflpeak: %s\n", failure.what());
        return EXIT_FAILURE;
    }
    std::fprintf(stderr, "usage: qorwflpeak write SIZE | qorwflpeak read FILE | qorwflpeak document SIZE\n");
    return 2;
}
