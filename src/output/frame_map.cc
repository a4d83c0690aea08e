#include "output/frame_map.h"

#include <span>
#include <vector>

#include "model/generic_encoding.h"
#include "output/frame_groups.h"
#include "output/molecules.h"

namespace zarel {
namespace {

// Objects as a sink takes them, in memory that is used again for the next one.
class ObjectViews {
 public:
  ObjectViews(const FrameGroups& groups, const AttributeTable& names,
              const NamespaceTable* namespaces)
      : groups_(groups), names_(names), namespaces_(namespaces) {}

  // Valid until the next call.
  AnswerObject view(const FrameGroups::Object& object);

 private:
  void add_attribute(const FrameGroups::FRAMETRIPLE& triple);

  const FrameGroups& groups_;
  const AttributeTable& names_;
  const NamespaceTable* namespaces_;
  std::vector<AnswerAttribute> attributes_;
  std::vector<AnswerTerm> values_;    // of all attributes
};

AnswerObject ObjectViews::view(const FrameGroups::Object& object) {
  attributes_.clear();
  values_.clear();
  for (auto at = object.first_triple; at != FrameGroups::kNone; at = groups_.triple(at).next) {
    add_attribute(groups_.triple(at));
  }
  // Only now do the values stay where they are.
  const AnswerTerm* begin = values_.data();
  for (AnswerAttribute& attribute : attributes_) {
    attribute.values = {begin, attribute.values.size()};
    begin += attribute.values.size();
  }
  std::string_view space = object.key.substr(object.name_size);
  space = space.empty() ? kDefaultSpace : space.substr(1);
  return {AnswerTerm(object.key.substr(0, object.name_size), namespaces_), space, attributes_};
}

// A value that the solver left out, also that of an attribute without one, is none.
void ObjectViews::add_attribute(const FrameGroups::FRAMETRIPLE& triple) {
  const std::size_t begin = values_.size();
  for (auto at = triple.first_value; at != FrameGroups::kNone; at = groups_.value(at).next) {
    const std::string_view value = groups_.value(at).text;
    if (!value.empty()) values_.emplace_back(value, namespaces_);
  }
  const auto [name, negated, arrow] = names_.parts(triple.attribute);
  attributes_.push_back({AnswerTerm(name, namespaces_), negated, arrow,
                         std::span(values_).subspan(begin)});    // for their number
}

}    // namespace

void FrameMap::add(const AttributeStatement& statement, bool has_value) {
  constexpr unsigned kHashBits = 32;
  std::uint32_t hash = hash_text(statement.object);
  if (!statement.suffix.empty()) hash ^= hash_text(statement.suffix);    // most have none
  parts_[hash >> (kHashBits - kPartBits)].add(
      {statement.object, statement.suffix, statement.value, hash,
       attributes_.number_of(statement.attribute, statement.negated, statement.arrow), has_value});
  is_empty_ = false;
}

void FrameMap::stringMolecules(std::string& out) const {
  if (is_empty_) return;
  Molecules molecules(attributes_);
  for (const FrameRecords& part : parts_) molecules.add_objects_of(part);
  molecules.append_in_key_order(out);
}

void FrameMap::report_objects(AnswerSink& sink) const {
  FrameGroups groups;
  for (const FrameRecords& part : parts_) groups.add(part);
  ObjectViews views(groups, attributes_, namespaces_);
  for (const auto position : positions_in_key_order(groups.objects())) {
    sink.object(views.view(groups.objects()[position]));
  }
}

void FrameMap::clear() {
  if (is_empty_) return;
  attributes_.clear();
  for (FrameRecords& part : parts_) part.clear();
  is_empty_ = true;
}

}    // namespace zarel
