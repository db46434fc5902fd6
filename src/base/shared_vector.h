// A vector whose copies share their elements until one of them is changed, so that documents with long lists
// are copied and compared at once. For one thread: another one is given a copy of list().
#pragma once
#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace quom {

template <class T>
class SharedVector {
 public:
    SharedVector() : elements_(std::make_shared<std::vector<T>>()) {}
    explicit SharedVector(std::size_t count) : elements_(std::make_shared<std::vector<T>>(count)) {}
    SharedVector(std::initializer_list<T> list) : elements_(std::make_shared<std::vector<T>>(list)) {}
    SharedVector(std::vector<T> elements)
        : elements_(std::make_shared<std::vector<T>>(std::move(elements))) {}

    std::size_t size() const { return elements_->size(); }
    bool empty() const { return elements_->empty(); }
    const T& operator[](std::size_t i) const { return (*elements_)[i]; }
    const T& front() const { return elements_->front(); }
    const T& back() const { return elements_->back(); }
    auto begin() const { return elements_->cbegin(); }
    auto end() const { return elements_->cend(); }
    const std::vector<T>& list() const { return *elements_; }

    // The elements for changing; no copy sees the change. What it gave before a copy was made is not to be
    // used after it.
    std::vector<T>& edit() {
        if (elements_.use_count() != 1) elements_ = std::make_shared<std::vector<T>>(*elements_);
        return *elements_;
    }

    bool shares(const SharedVector& other) const { return elements_ == other.elements_; }
    bool operator==(const SharedVector& other) const {
        return shares(other) || *elements_ == *other.elements_;
    }

 private:
    std::shared_ptr<std::vector<T>> elements_;  // never null; a value that was moved from is not to be read
};

}  // namespace quom
