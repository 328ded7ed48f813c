#pragma once

#include <qt_windows.h>

/// Puts a function in the place of one that a module of this process imports, while the object
/// lives. Who calls that function from within the module comes to the other one.
class ImportedFunction
{
public:
    /// @p module is the name of the module that imports, null for the program itself. A function
    /// that it doesn't import is a mistake in the test and ends the program. @p replacement has to
    /// be a function of the same type.
    ImportedFunction(const wchar_t *module, const char *name, void *replacement);
    ~ImportedFunction();
    ImportedFunction(const ImportedFunction &) = delete;
    ImportedFunction &operator=(const ImportedFunction &) = delete;

    /// The function that was in that place.
    void *original() const { return reinterpret_cast<void *>(m_original); }

private:
    void point(ULONG_PTR address) const;

    ULONG_PTR *m_entry;
    ULONG_PTR m_original;
};
