#include "platform/macos/MacAttributeBuffer.h"

#include <sys/stat.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>

namespace kestrune {

namespace {

constexpr attrgroup_t commonWanted =
    ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_ERROR | ATTR_CMN_NAME | ATTR_CMN_OBJTYPE | ATTR_CMN_FLAGS;

// enum vtype of <sys/vnode.h>, which getattrlist(2) refers to for ATTR_CMN_OBJTYPE.
constexpr fsobj_type_t regularFile = 1;
constexpr fsobj_type_t folder = 2;
constexpr fsobj_type_t symbolicLink = 5;

/// The attributes of one entry that were returned.
struct Attributes {
    std::uint32_t error = 0;
    std::string_view name;
    std::optional<fsobj_type_t> type;
    std::uint32_t flags = 0;
    std::uint32_t mountStatus = 0;
    std::optional<std::int64_t> allocatedBytes;
};

/// Reads fields one after the other and fails when one does not fit.
class Fields final {
public:
    explicit Fields(std::string_view bytes) : m_bytes(bytes) {}

    template <class Value>
    bool read(Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        if (m_bytes.size() - m_position < sizeof value) {
            return false;
        }
        std::memcpy(&value, m_bytes.data() + m_position, sizeof value);
        m_position += sizeof value;
        return true;
    }

    /// The text that the reference at this place leads to, without the NUL at its end.
    bool readText(std::string_view& text) {
        const auto base = static_cast<std::int64_t>(m_position);
        attrreference_t reference{};
        if (!read(reference)) {
            return false;
        }
        const std::int64_t start = base + reference.attr_dataoffset;
        const std::int64_t end = start + reference.attr_length;
        if (start < 0 || reference.attr_length == 0 || end > static_cast<std::int64_t>(m_bytes.size())) {
            return false;
        }
        text = m_bytes.substr(static_cast<std::size_t>(start), reference.attr_length);
        text = text.substr(0, text.find('\0'));
        return text.size() < reference.attr_length;
    }

private:
    const std::string_view m_bytes;
    std::size_t m_position = 0;
};

/// Whether nothing was returned that was not asked for: it would shift what follows.
bool isAsAsked(const attribute_set_t& returned) {
    return (returned.commonattr & ~commonWanted) == 0 && returned.volattr == 0 &&
           (returned.dirattr & ~attrgroup_t{ATTR_DIR_MOUNTSTATUS}) == 0 &&
           (returned.fileattr & ~attrgroup_t{ATTR_FILE_ALLOCSIZE}) == 0 && returned.forkattr == 0;
}

template <class Value>
bool readOptional(Fields& fields, std::optional<Value>& value) {
    Value found{};
    if (!fields.read(found)) {
        return false;
    }
    value = found;
    return true;
}

/// What lies in one entry after its length. Nothing when it is not laid out as it should be.
std::optional<Attributes> attributesIn(std::string_view group) {
    Fields fields(group);
    std::uint32_t length = 0;
    attribute_set_t returned{};
    if (!fields.read(length) || !fields.read(returned) || !isAsAsked(returned)) {
        return std::nullopt;
    }
    Attributes found;
    const auto has = [](attrgroup_t attributes, attrgroup_t attribute) { return (attributes & attribute) != 0; };
    const bool isWhole = (!has(returned.commonattr, ATTR_CMN_ERROR) || fields.read(found.error)) &&
                         (!has(returned.commonattr, ATTR_CMN_NAME) || fields.readText(found.name)) &&
                         (!has(returned.commonattr, ATTR_CMN_OBJTYPE) || readOptional(fields, found.type)) &&
                         (!has(returned.commonattr, ATTR_CMN_FLAGS) || fields.read(found.flags)) &&
                         (!has(returned.dirattr, ATTR_DIR_MOUNTSTATUS) || fields.read(found.mountStatus)) &&
                         (!has(returned.fileattr, ATTR_FILE_ALLOCSIZE) || readOptional(fields, found.allocatedBytes));
    return isWhole ? std::optional(found) : std::nullopt;
}

WalkEntry folderWith(const Attributes& found) {
    if ((found.mountStatus & (DIR_MNTSTATUS_MNTPOINT | DIR_MNTSTATUS_TRIGGER)) != 0) {
        return {WalkEntryKind::elsewhere, 0};
    }
    return {(found.flags & SF_DATALESS) != 0 ? WalkEntryKind::unreadable : WalkEntryKind::folder, 0};
}

WalkEntry fileWith(const Attributes& found) {
    const std::int64_t bytes = found.allocatedBytes.value_or(-1);
    return found.error != 0 || bytes < 0 ? WalkEntry{WalkEntryKind::unreadable, 0}
                                         : WalkEntry{WalkEntryKind::file, bytes};
}

WalkEntry entryOf(const Attributes& found) {
    const bool isName = !found.name.empty() && found.name.find('/') == std::string_view::npos;
    if (!isName || !found.type) {
        return {WalkEntryKind::unreadable, 0};
    }
    switch (*found.type) {
        case regularFile:
            return fileWith(found);
        case folder:
            return folderWith(found);
        case symbolicLink:
            return {WalkEntryKind::link, 0};
        default:
            return {WalkEntryKind::other, 0};
    }
}

}  // namespace

attrlist attributesOfWalk() {
    attrlist wanted{};
    wanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    wanted.commonattr = commonWanted;
    wanted.dirattr = ATTR_DIR_MOUNTSTATUS;
    wanted.fileattr = ATTR_FILE_ALLOCSIZE;
    return wanted;
}

bool readAttributes(std::string_view buffer, std::size_t count, std::vector<MacDirectoryEntry>& entries) {
    for (; count > 0; --count) {
        std::uint32_t length = 0;
        if (!Fields(buffer).read(length) || length < sizeof length || length > buffer.size()) {
            return false;
        }
        const auto found = attributesIn(buffer.substr(0, length));
        buffer.remove_prefix(length);
        if (!found) {
            entries.push_back({"", {WalkEntryKind::unreadable, 0}});
        } else if (found->name != "." && found->name != "..") {
            entries.push_back({found->name.empty() ? "" : found->name.data(), entryOf(*found)});
        }
    }
    return true;
}

}  // namespace kestrune
