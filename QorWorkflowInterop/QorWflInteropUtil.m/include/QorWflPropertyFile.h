#ifndef QorWflPropertyFile_H
#define QorWflPropertyFile_H

#include "QorWflExport.h"

#include <BexListValBexUnicodeString.h>

/**
 * An ordered table of keys and values, filled by hand and from property files.
 *
 * Positions count from 1 in the order in which each key was first set; no key occurs twice; the empty key is a key like
 * others. Keys compare exactly. SetValue() takes constant time on average, also with a million keys. Memory that cannot
 * be had is std::bad_alloc. A table belongs to one thread while it is changed; then any number may read it.
 */
class QORWFL_EXPORT QorWflPropertyFile {
public:
    /** An empty table. */
    QorWflPropertyFile();

    /**
     * Adds what a property file sets, over what the table holds.
     *
     * A name that begins with "/" is taken as it stands. Another is looked for in the directories of the environment
     * variable `BexMsgCatalogPath`, separated by colons, an empty one being the current directory; the first regular
     * file of the name counts. The file's lines are `key = value`: a backslash at the end of a line joins the next one,
     * a line whose first character but blanks is "/" is a comment, a line without "=" or with it in front is skipped;
     * every blank is taken out of the key, the value loses those around it and then one pair of enclosing quote
     * characters. The last setting of a key wins, at the key's first place.
     *
     * @param iFileName the name, up to its first NUL character
     * @return 1 when there is no regular file of that name, else 0, also when it could not be opened (then nothing is
     *         read). A file that cannot be read to its end gives what was read before.
     */
    int Read(const BexUnicodeString& iFileName);
    /** @return the number of keys. */
    int GetNKeys() const;
    /** @return the key at @p iIndex, null outside 1 to GetNKeys(). */
    BexUnicodeString GetKey(int iIndex) const;
    /** @return the value at @p iIndex, null outside 1 to GetNKeys(). */
    BexUnicodeString GetValue(int iIndex) const;
    /** Sets a key: at its place when it is there, else behind the last. */
    void SetValue(const BexUnicodeString& iKey, const BexUnicodeString& iValue);

private:
    void Put(BexUnicodeString&& ioKey, BexUnicodeString&& ioValue);

    BexListValBexUnicodeString keys;
    BexListValBexUnicodeString values;  // the value of the key at the same position
};

#endif
