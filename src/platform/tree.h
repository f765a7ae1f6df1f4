// A tree of nodes with keys. Indexes count the nodes from 1 in the order in which they were added.
#pragma once

#include <string>

#include "platform/control.h"
#include "platform/event.h"
#include "platform/keys.h"

namespace orvenmod::platform {

class Tree : public Control {
public:
    virtual void clear() = 0;
    /// Adds a node under the node `parentKey`, behind its children; "" adds a root. Throws std::runtime_error where the
    /// parent is missing or the key is taken. Constant time.
    virtual void add(const std::string& parentKey, const std::string& key, const std::string& text,
                     const std::string& image) = 0;
    /// Opens the ancestors of the node.
    virtual void ensureVisible(const std::string& key) = 0;
    /// Removes the node and all below it.
    virtual void remove(const std::string& key) = 0;

    virtual int count() const = 0;
    virtual bool has(const std::string& key) const = 0;
    virtual std::string text(const std::string& key) const = 0;
    virtual std::string parent(const std::string& key) const = 0;
    virtual bool expanded(const std::string& key) const = 0;
    virtual int indexOf(const std::string& key) const = 0;
    virtual std::string keyAt(int index) const = 0;

    /// The selected node's key, "" for none.
    virtual std::string selected() const = 0;
    /// Selects without raising nodeClick; "" for none.
    virtual void select(const std::string& key) = 0;

    Event<std::string> nodeClick;  ///< the node's key; also raised when the keyboard moves to a node
    Event<MouseButton> mouseDown;  ///< to the right button the node under the mouse has raised nodeClick before
};

}  // namespace orvenmod::platform
