#include "support/ImportedFunction.h"

#include <QtGlobal>

#include <cstdint>
#include <cstring>

namespace {

/// The entry of the function @p name in the table of what @p module imports; null if there is none.
ULONG_PTR *entryOf(const wchar_t *module, const char *name)
{
    auto *const base = reinterpret_cast<std::uint8_t *>(GetModuleHandleW(module));
    const auto *dos = reinterpret_cast<const IMAGE_DOS_HEADER *>(base);
    const auto *headers = reinterpret_cast<const IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
    const auto &imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto *library =
             reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR *>(base + imports.VirtualAddress);
         library->Name != 0; ++library) {
        auto *hint = reinterpret_cast<const IMAGE_THUNK_DATA *>(base + library->OriginalFirstThunk);
        auto *entry = reinterpret_cast<IMAGE_THUNK_DATA *>(base + library->FirstThunk);
        for (; hint->u1.AddressOfData != 0; ++hint, ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL(hint->u1.Ordinal)) {
                continue;
            }
            const auto *function =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME *>(base + hint->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char *>(function->Name), name) == 0) {
                return reinterpret_cast<ULONG_PTR *>(&entry->u1.Function);
            }
        }
    }
    return nullptr;
}

} // namespace

ImportedFunction::ImportedFunction(const wchar_t *module, const char *name, void *replacement)
    : m_entry(entryOf(module, name))
{
    if (!m_entry) {
        qFatal("ImportedFunction: nothing imports %s", name);
    }
    m_original = *m_entry;
    point(reinterpret_cast<ULONG_PTR>(replacement));
}

ImportedFunction::~ImportedFunction()
{
    point(m_original);
}

void ImportedFunction::point(ULONG_PTR address) const
{
    DWORD protection = 0;
    VirtualProtect(m_entry, sizeof *m_entry, PAGE_READWRITE, &protection);
    *m_entry = address;
    VirtualProtect(m_entry, sizeof *m_entry, protection, &protection);
}
