#include "store/Store.h"

#include "store/StoreImpl.h"

#include <utility>

namespace talnik {

Store::Store(QString path) : impl_(std::make_unique<Impl>(*this)), path_(std::move(path)) {}

Store::~Store() = default;

bool Store::Open() {
  int error = SQLITE_OK;
  return impl_->Ready(error) != nullptr;
}

void Store::Close() {
  impl_->Drop();
}

bool Store::Execute(const Statement& statement) {
  return impl_->Write([&](Connection& open) {
    Running running(open, statement.sql);
    running.Bind(statement.values);
    return running.Finish();
  });
}

std::optional<qint64> Store::Number(const Statement& statement) {
  return impl_->Count(statement);
}

bool Store::ForEach(const Statement& statement, const std::function<bool(const ScheduleRecord&)>& row) {
  return impl_->Read(statement, [&](const Running& running) { return row(running.Record()); });
}

bool Store::ForEachRow(const Statement& statement, const std::function<bool(const StoreRow&)>& row) {
  return impl_->Read(statement, [&](const Running& running) { return row(StoreRow(running.Handle())); });
}

bool Store::Insert(const ScheduleRecord& record) {
  return impl_->Insert(record).has_value();
}

qint64 Store::MarkSeries() {
  return impl_->seriesWatch.Mark();
}

std::optional<QSet<QString>> Store::SeriesWrittenSince(qint64 mark) const {
  return impl_->seriesWatch.Since(mark);
}

bool Store::InTransaction(const std::function<bool()>& work) {
  return impl_->InTransaction(work);
}

}  // namespace talnik
