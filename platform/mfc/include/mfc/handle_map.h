// From a handle of the platform to its object: the one attached, or a temporary one that lives until the framework is
// idle (DeleteTempMap) and doesn't own the handle.
#pragma once

#include <map>
#include <memory>

template <typename Object, typename Handle>
class CHandleMap {
public:
    [[nodiscard]] Object* Permanent(Handle handle) const {
        const auto found = m_permanent.find(handle);
        return found != m_permanent.end() ? found->second : nullptr;
    }
    /// `make` gives a temporary object for a handle.
    template <typename Make>
    Object* FromHandle(Handle handle, Make make) {
        if (handle == Handle{})
            return nullptr;
        if (Object* object = Permanent(handle))
            return object;
        std::unique_ptr<Object>& temporary = m_temporary[handle];
        if (temporary == nullptr)
            temporary = make(handle);
        return temporary.get();
    }
    /// `release` as in DeleteTemp: a temporary object may be left of a handle that has come into use again.
    template <typename Release>
    void SetPermanent(Handle handle, Object* object, Release release) {
        ForgetTemp(handle, release);
        m_permanent[handle] = object;
    }
    template <typename Release>
    void ForgetTemp(Handle handle, Release release) {
        const auto found = m_temporary.find(handle);
        if (found == m_temporary.end())
            return;
        release(*found->second);
        m_temporary.erase(found);
    }
    void Remove(Handle handle) { m_permanent.erase(handle); }
    /// `release` takes the handle out of each temporary object, which doesn't own it.
    template <typename Release>
    void DeleteTemp(Release release) {
        for (auto& [handle, object] : m_temporary)
            release(*object);
        m_temporary.clear();
    }

private:
    std::map<Handle, Object*> m_permanent;
    std::map<Handle, std::unique_ptr<Object>> m_temporary;
};
