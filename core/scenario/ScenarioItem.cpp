// The item model.
