#pragma once

#include <libsecret/secret.h>

#include <memory>

namespace tarnwik {

struct GLibRelease
{
    void operator()(GMainContext *context) const { g_main_context_unref(context); }
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
    void operator()(GVariant *variant) const { g_variant_unref(variant); }
    void operator()(GError *error) const { g_error_free(error); }
    void operator()(GList *list) const { g_list_free(list); }
    void operator()(char *text) const { g_free(text); }
    void operator()(SecretValue *value) const { secret_value_unref(value); }
};

/// Owns a structure of GLib or libsecret that is no GObject.
template<typename T>
using GLibPointer = std::unique_ptr<T, GLibRelease>;

struct GObjectRelease
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to a GObject.
template<typename T>
using GObjectPointer = std::unique_ptr<T, GObjectRelease>;

} // namespace tarnwik
