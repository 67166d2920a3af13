/// The library's front door. A database is named by the key that `CreateDatabase` gives out. Calls are not
/// synchronised: one manager is used by one thread at a time.

#pragma once

#include <memory>

#include "kestrel/errors.h"
#include "kestrel/records.h"

/// Owner of databases and everything in them.
class KestrelManager {
  public:
    KestrelManager(const KestrelManager&) = delete;
    KestrelManager(KestrelManager&&) = delete;
    KestrelManager& operator=(const KestrelManager&) = delete;
    KestrelManager& operator=(KestrelManager&&) = delete;
    /// Frees all databases with their records, texts and value descriptions, and the keys.
    virtual ~KestrelManager();

    /// Frees a database with all its records; pointers to them must not be used any more. Nothing is written.
    /// The flag has no effect. Fails with `kKestrelUnknownDatabase`, also when the database is already
    /// closed.
    KestrelError CloseDatabase(const char* database, bool);

  protected:
    KestrelManager();

    struct Impl;
    /// The databases. Never null.
    std::unique_ptr<Impl> impl_;
};

/// Creates databases, looks up their records and writes them to files.
///
/// `Create...` functions never return null, except `CreateAttrDefinition`: for a null or unknown key the
/// record goes to a holding area that belongs to no database, can be searched like one and is never written.
/// The number that they take besides has no effect.
///
/// Among records with the same name or identifier a look-up finds the one that was created first. It reads
/// names and identifiers from the records, not earlier than at the first look-up after the record was
/// created: a name may be filled in at any later time (until then the record is found by the empty name) but
/// not be changed once a look-up has seen it; a message's identifier is filled in before the next
/// `GetMessage`.
class KestrelWriteManager : public KestrelManager {
  public:
    /// The handle of the running process is taken for the sake of callers that have one; it has no effect and
    /// may be null.
    explicit KestrelWriteManager(void* process);

    /// Creates an empty database. `*database` becomes its key, a text that the manager keeps until it is
    /// destroyed. The name is copied and need not be unique. `reference` has no effect and may be null. Fails
    /// with `kKestrelBadArgument` when `name` or `database` is null.
    KestrelError CreateDatabase(const char* name, const char** database, const char* reference);

    /// Creates an attribute definition, or returns null when no open database has the key.
    attr_def* CreateAttrDefinition(const char* database, unsigned int);

    /// Creates a node. Never null.
    symblk* CreateNode(const char* database, unsigned int);
    /// Creates a message. Never null.
    msgblk* CreateMessage(const char* database, unsigned int);
    /// Creates a signal in `message`, a message of this manager. Never null.
    sigblk* CreateSignal(msgblk& message, unsigned int);

    /// Sets the scaling of `signal`, a signal of `message`, a message of this manager; a later one replaces
    /// it. The scaling is copied. Of a unit the first `kUnitSize` bytes count, without half a character at
    /// their end. Fails with `kKestrelBadArgument`, and changes nothing, when a number is not finite or the
    /// factor not above 0.
    KestrelError SetScaling(msgblk& message, sigblk& signal, const sigscale& scaling);

    /// Sets an attribute of a database, of a node or of a message of this manager. A later value replaces an
    /// earlier one of the same attribute and takes its place in the order of setting. Only the first 32 bytes
    /// of the name count.
    ///
    /// The value is ignored when the object's database has no definition of that name for that kind of
    /// object. A text must not be passed then: without the definition the library cannot tell it from a
    /// number, so nobody would free it. Otherwise a text belongs to the library from here on.
    void SetAttrValue(const char* database, const char* attribute, kestrel_attr_value_t value);
    /// Sets an attribute of a node, as above.
    void SetAttrValue(symblk& node, const char* attribute, kestrel_attr_value_t value);
    /// Sets an attribute of a message, as above.
    void SetAttrValue(msgblk& message, const char* attribute, kestrel_attr_value_t value);

    /// Finds a node by the first 32 bytes of `name`, or returns null. With an unknown or null key the holding
    /// area is searched.
    symblk* GetNode(const char* name, const char* database);
    /// Finds a message by its identifier, or returns null. A null key searches every database and the holding
    /// area, an unknown one the holding area.
    msgblk* GetMessage(unsigned long identifier, const char* database);
    /// Finds a signal of `message`, a message of this manager, or returns null. The name is compared whole:
    /// one of more than 32 bytes is never found.
    sigblk* GetSignal(const msgblk& message, const char* name);

    /// Writes the database to a file. The file is replaced in one step once its new content is complete and
    /// on disk; after a failure the old one is unchanged. A symbolic link stays, the file it points to is
    /// replaced. An existing file must be a regular one with write permission, whoever asks. Equal databases
    /// give equal bytes. Fails with `kKestrelBadArgument` (null path), `kKestrelUnknownDatabase`,
    /// `kKestrelCannotOpen` or `kKestrelWriteFailed`.
    KestrelError WriteDatabase(const char* database, const char* path);
};
