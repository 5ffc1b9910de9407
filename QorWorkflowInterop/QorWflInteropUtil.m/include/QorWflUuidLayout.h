#ifndef QorWflUuidLayout_H
#define QorWflUuidLayout_H

/**
 * The layout of a UUID block: three texts padded on the right with blanks, then two binary identifiers. Offsets and
 * widths are in bytes; nothing terminates the block.
 */
namespace QorWflUuidLayout {

/** Where a field stands in the block. */
struct Field {
    int offset;  ///< of its first byte
    int width;   ///< in bytes
    /** @return the offset behind the field. */
    constexpr int End() const { return offset + width; }
};

constexpr Field kDbName{0, 8};              ///< the database
constexpr Field kKienv{kDbName.End(), 8};   ///< the environment
constexpr Field kKitab{kKienv.End(), 18};   ///< the object's table
constexpr Field kXCoid{kKitab.End(), 8};    ///< the binary identifier
constexpr Field kXCompid{kXCoid.End(), 8};  ///< the second binary identifier
constexpr int kBlockSize = kXCompid.End();  ///< the whole block
static_assert(kBlockSize == 50, "a UUID block has 50 bytes");

}  // namespace QorWflUuidLayout

#endif
