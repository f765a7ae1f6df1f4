// A tree in memory.
#pragma once

#include <string>

#include "platform/memory/controlcore.h"
#include "platform/model/treemodel.h"
#include "platform/tree.h"

namespace orvenmod::platform::memory {

class MemoryTree final : public MemoryControl<Tree> {
public:
    using MemoryControl::MemoryControl;
    void clear() override { model_.clear(); }
    void add(const std::string& parentKey, const std::string& key, const std::string& text,
             const std::string& image) override;
    void ensureVisible(const std::string& key) override { model_.ensureVisible(key); }
    void remove(const std::string& key) override { model_.remove(key); }
    int count() const override { return model_.count(); }
    bool has(const std::string& key) const override { return model_.has(key); }
    std::string text(const std::string& key) const override { return model_.node(key).text; }
    std::string parent(const std::string& key) const override;
    bool expanded(const std::string& key) const override { return model_.node(key).expanded; }
    int indexOf(const std::string& key) const override { return model_.indexOf(key); }
    std::string keyAt(int index) const override { return model_.keyAt(index); }
    std::string selected() const override { return model_.selected(); }
    void select(const std::string& key) override { model_.select(key); }

    /// The user opens or closes a node.
    void setExpanded(const std::string& key, bool expanded) { model_.setExpanded(key, expanded); }
    const model::TreeModel& model() const { return model_; }

private:
    model::TreeModel model_;
};

}  // namespace orvenmod::platform::memory
