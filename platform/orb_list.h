// The phone's ordered list: the container in whose terms the directory store and the key model are declared.
#pragma once

#include <cstddef>
#include <iterator>
#include <utility>

// A doubly linked list between a head and a tail sentinel, with an element count. Owns its elements; iterators stay
// valid until their element is erased.
template <class T>
class OrbList {
  struct Link {
    Link* previous = nullptr;
    Link* next = nullptr;
  };
  struct Node : Link {
    template <class U>
    explicit Node(U&& v) : value(std::forward<U>(v)) {}
    T value;
  };

  template <class Value, class NodePointer, class LinkPointer>
  class Iterator {
   public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Value*;
    using reference = Value&;

    Iterator() = default;
    explicit Iterator(LinkPointer link) : link_(link) {}
    reference operator*() const { return static_cast<NodePointer>(link_)->value; }
    pointer operator->() const { return &**this; }
    Iterator& operator++() {
      link_ = link_->next;
      return *this;
    }
    Iterator operator++(int) {
      Iterator old = *this;
      ++*this;
      return old;
    }
    Iterator& operator--() {
      link_ = link_->previous;
      return *this;
    }
    Iterator operator--(int) {
      Iterator old = *this;
      --*this;
      return old;
    }
    bool operator==(const Iterator& other) const = default;

   private:
    friend class OrbList;
    LinkPointer link_ = nullptr;
  };

 public:
  using value_type = T;
  using iterator = Iterator<T, Node*, Link*>;
  using const_iterator = Iterator<const T, const Node*, const Link*>;

  OrbList() { reset(); }
  OrbList(const OrbList& other) : OrbList() {
    for (const T& value : other) push_back(value);
  }
  OrbList(OrbList&& other) noexcept : OrbList() { swap(other); }
  OrbList& operator=(OrbList other) noexcept {
    swap(other);
    return *this;
  }
  ~OrbList() { clear(); }

  void push_back(const T& value) { insertBefore(&tail_, new Node(value)); }
  void push_back(T&& value) { insertBefore(&tail_, new Node(std::move(value))); }

  // Removes the element and returns the place after it.
  iterator erase(iterator position) {
    Link* next = position.link_->next;
    position.link_->previous->next = next;
    next->previous = position.link_->previous;
    delete static_cast<Node*>(position.link_);
    --size_;
    return iterator(next);
  }

  void clear() {
    for (Link* link = head_.next; link != &tail_;) delete static_cast<Node*>(std::exchange(link, link->next));
    reset();
  }

  void swap(OrbList& other) noexcept {
    OrbList* lists[] = {this, &other};
    Link *first[2], *last[2];
    for (int i = 0; i < 2; ++i) {
      const bool filled = lists[i]->size_ != 0;
      first[i] = filled ? lists[i]->head_.next : nullptr;
      last[i] = filled ? lists[i]->tail_.previous : nullptr;
    }
    std::swap(size_, other.size_);
    for (int i = 0; i < 2; ++i) lists[i]->adopt(first[1 - i], last[1 - i]);
  }

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T& front() { return *begin(); }
  const T& front() const { return *begin(); }
  T& back() { return *--end(); }
  const T& back() const { return *--end(); }

  iterator begin() { return iterator(head_.next); }
  iterator end() { return iterator(&tail_); }
  const_iterator begin() const { return const_iterator(head_.next); }
  const_iterator end() const { return const_iterator(&tail_); }

 private:
  void reset() {
    head_.next = &tail_;
    tail_.previous = &head_;
    size_ = 0;
  }
  void insertBefore(Link* place, Node* node) {
    node->previous = place->previous;
    node->next = place;
    place->previous->next = node;
    place->previous = node;
    ++size_;
  }
  void adopt(Link* first, Link* last) {
    head_.next = first ? first : &tail_;
    tail_.previous = last ? last : &head_;
    head_.next->previous = &head_;
    tail_.previous->next = &tail_;
  }

  Link head_, tail_;
  std::size_t size_ = 0;
};
