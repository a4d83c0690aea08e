#include "parser/template_builder.h"

#include <utility>

#include "model/names.h"
#include "parser/reading_scope.h"
#include "templates/definitions.h"
#include "templates/template_rules.h"

namespace zarel {

void TemplateBuilder::formal_predicate(NameId name, Number arity) {
  if (tree_.is_open()) tree_.formal(name, arity.value);
  definition_.formals.add(
      {std::string(names().spelling(name)), static_cast<std::int32_t>(arity.value)});
}

void TemplateBuilder::global_predicate(NameId name, const SourceRange& place) {
  if (tree_.is_open()) tree_.global(name, place);
  GLOBALS().add(name);
  definition_.globals.insert(name);
}

void TemplateBuilder::open(WrittenName name, Number output_arity) {
  definition_.name = names().spelling(name.id);
  {
    const ReadingScope at_name(work(), name.place);
    check_template_name(definition_.name);
    name_place_ = work().where().range;
  }
  definition_.outputArity = static_cast<std::int32_t>(output_arity.value);
  definition_.sequence_number = static_cast<std::uint32_t>(cont());
  definition_.frame_space = spaces_.currentDefaultNs();
  definition_.head = work().where();
  if (tree_.is_open()) tree_.open_template(name.id, name_place_, output_arity.value);
  is_open_ = true;
}

void TemplateBuilder::close() {
  {
    const ReadingScope at_name(work(), &name_place_);
    addedDefinition(std::move(definition_));
  }
  if (tree_.is_open()) tree_.close_template();
  leave();
}

// A definition with an error used its number up too: names of two definitions never mix.
void TemplateBuilder::leave() {
  if (is_open_) {
    ++cont();
    tree_.leave_template();
  }
  is_open_ = false;
  definition_ = DEFINITIONATOM{};
}

FrameContext TemplateBuilder::frame_context() const {
  return {OptionHigherOrder(), is_open_ && template_rules().are_frames_local()};
}

}    // namespace zarel
