<?xml version="1.0" encoding="UTF-8"?>
<sce version="1">
  <Scenario>
</sce>
