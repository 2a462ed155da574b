-- SPDX-License-Identifier: Apache-2.0
-- A filter for pandoc: cuts a manual page out of a document for readers. The metadata say which one:
--   page      tarnmf, tarnmf-COMMAND, or what else a page is called
--   heading   of the one section that the page is; without it a command's sections, or the document
--   without   the heading of a section that has a page of its own
--   synopsis  where the document has none
-- Code of the language "synopsis" is one; in docs/tool.md the table of commands has the lines for NAME.
-- Tables of options, tables of exit statuses and paragraphs that begin with "The exit status is" go into
-- the sections of a manual page that are meant for them.
local stringify = pandoc.utils.stringify
local general_heading = 'All commands'

-- A hyphen that is one of what people type, and nothing that is taken for a request.
local function escaped(text)
  return (text:gsub('\\', '\\e'):gsub('%-', '\\-'):gsub("%f[^\n\0]([.'])", '\\&%1'))
end

local function bold(text)
  return pandoc.RawInline('man', '\\f[B]' .. escaped(text) .. '\\f[R]')
end

local function reference(page, section)
  return { bold(page), pandoc.Str('(' .. section .. ')') }
end

local function append(list, more)
  for _, each in ipairs(more) do list[#list + 1] = each end
end

-- ---- Inlines and blocks as manual pages have them ----

local function link(element)
  local target = element.target
  local command = target:match('^#tarnmf%-(%l+)')
  if command then return reference('tarnmf-' .. command, 1) end
  if target:match('^manifest%-format%.md') then return reference('tarnmf-manifest', 5) end
  if target:match('^tool%.md') then return reference('tarnmf', 1) end
  return element.content
end

local function code_block(element)
  return pandoc.RawBlock('man', '.IP\n.nf\n' .. escaped(element.text) .. '\n.fi')
end

-- Terminals are too narrow for columns: the first cell of a row becomes a term, the others what is said
-- about it. Of more than two columns the headings are kept, but for "meaning".
local function definitions(element)
  local simple = pandoc.utils.to_simple_table(element)
  local items = {}
  for _, row in ipairs(simple.rows) do
    local said = {}
    for column = 2, #row do
      local title = stringify(simple.headers[column])
      local cell = row[column]
      if #cell > 0 then
        local inlines = pandoc.utils.blocks_to_inlines(cell)
        if #row > 2 and title ~= 'meaning' then
          table.insert(inlines, 1, pandoc.Space())
          table.insert(inlines, 1, pandoc.Str(title .. ':'))
        end
        said[#said + 1] = pandoc.Para(inlines)
      end
    end
    items[#items + 1] = { pandoc.utils.blocks_to_inlines(row[1]), { said } }
  end
  local list = pandoc.DefinitionList(items)
  if #simple.headers == 2 then return list end
  local title = pandoc.utils.blocks_to_inlines(simple.headers[1])
  return { pandoc.Para({ pandoc.Strong(title), pandoc.Str(':') }), list }
end

local function as_manual(blocks)
  local filter = {
    Code = function(element) return bold(element.text) end,
    CodeBlock = code_block,
    Image = function() return {} end,
    Link = link,
    RawBlock = function() return {} end,
    Table = definitions,
  }
  return pandoc.walk_block(pandoc.Div(blocks), filter).content
end

-- ---- Sections of the document ----

-- Each with what stands between its heading and the next one, and the number of the section around it.
local function sections_of(blocks)
  local sections = { { title = '', level = 0, blocks = {} } }
  local around = {}
  for _, block in ipairs(blocks) do
    if block.t == 'Header' then
      local section = { heading = block, title = stringify(block), level = block.level, blocks = {} }
      for level = block.level - 1, 1, -1 do
        section.parent = section.parent or around[level]
      end
      for level = block.level, 6 do around[level] = nil end
      around[block.level] = section
      sections[#sections + 1] = section
    else
      table.insert(sections[#sections].blocks, block)
    end
  end
  return sections
end

local function find(sections, title)
  for _, section in ipairs(sections) do
    if section.title == title then return section end
  end
  error('there is no section "' .. title .. '"')
end

local function is_within(section, outer)
  while section and section ~= outer do section = section.parent end
  return section ~= nil
end

local function table_title(block)
  return block.t == 'Table' and stringify(pandoc.utils.to_simple_table(block).headers[1])
end

-- The parts of a page that are filled from sections.
local Page = {}
Page.__index = Page

function Page.new()
  return setmetatable({ synopsis = {}, description = {}, options = {}, exit = {}, commands = {} }, Page)
end

function Page:add(section)
  for _, block in ipairs(section.blocks) do
    local title = table_title(block)
    if block.t == 'CodeBlock' and block.classes:includes('synopsis') then
      table.insert(self.synopsis, block)
    elseif title == 'option' then
      table.insert(self.options, block)
    elseif title == 'command' then
      table.insert(self.commands, block)
    elseif title == 'exit status' or
        block.t == 'Para' and stringify(block):match('^The exit status is') then
      table.insert(self.exit, block)
    else
      table.insert(self.description, block)
    end
  end
end

function Page:add_heading(section)
  table.insert(self.description, pandoc.Header(2, section.heading.content))
end

-- ---- The three kinds of pages ----

local function lines_of_commands(sections)
  local lines, commands = {}, {}
  for _, section in ipairs(sections) do
    for _, block in ipairs(section.blocks) do
      if table_title(block) == 'command' then
        for _, row in ipairs(pandoc.utils.to_simple_table(block).rows) do
          local name = stringify(row[1]):gsub(' ', '-')
          lines[name] = stringify(row[2])
          commands[#commands + 1] = name
        end
      end
    end
  end
  return lines, commands
end

local function command_page(sections, command)
  local page = Page.new()
  local own = {}
  for _, section in ipairs(sections) do
    if section.title == 'tarnmf ' .. command or
        section.title:sub(1, #command + 8) == 'tarnmf ' .. command .. ' ' then
      own[#own + 1] = section
    end
  end
  assert(#own > 0, 'there is no section about tarnmf ' .. command)
  for _, outer in ipairs(own) do
    for _, section in ipairs(sections) do
      if is_within(section, outer) then
        if #own > 1 or section ~= outer then page:add_heading(section) end
        page:add(section)
      end
    end
  end
  local shared = own[1].parent
  if shared.level > 1 then
    page:add_heading(shared)
    page:add(shared)
  end
  local general = Page.new()
  general:add(find(sections, general_heading))
  append(page.options, general.options)
  if #page.exit == 0 then page.exit = general.exit end
  return page
end

local function tool_page(sections)
  local page = Page.new()
  page:add(sections[2])
  page:add(find(sections, general_heading))
  page:add_heading(find(sections, 'Completion'))
  page:add(find(sections, 'Completion'))
  return page
end

local function document_page(sections, heading, without, synopsis)
  local page = Page.new()
  page.synopsis = { pandoc.CodeBlock(synopsis) }
  local only = heading and find(sections, heading)
  local left_out = without and find(sections, without)
  for _, section in ipairs(sections) do
    local is_part = (not only or is_within(section, only)) and
      not (left_out and is_within(section, left_out))
    if is_part then
      if section.level > 1 and section ~= only then page:add_heading(section) end
      page:add(section)
    end
  end
  return page
end

-- "The layout file" as the line that says what a page is about.
local function line_of_heading(heading)
  return heading:sub(1, 1):lower() .. heading:sub(2)
end

function Pandoc(doc)
  local function given(key) return doc.meta[key] and stringify(doc.meta[key]) end
  local name = given('page')
  local sections = sections_of(doc.blocks)
  local lines, commands = lines_of_commands(sections)
  local page, about, see = nil, lines[name], {}
  if about then
    page = command_page(sections, name:match('^tarnmf%-(.+)$'))
  elseif name == 'tarnmf' then
    page = tool_page(sections)
    about = stringify(sections[2].blocks[1]):match('^tarnmf (.-)%.')
    for _, command in ipairs(commands) do see[#see + 1] = { command, 1 } end
  else
    local heading = given('heading')
    page = document_page(sections, heading, given('without'), given('synopsis'))
    about = line_of_heading(heading or sections[2].title)
    see = { { 'tarnmf-check', 1 }, { 'tarnmf-explain', 1 } }
  end
  table.insert(see, 1, { 'tarnmf', 1 })
  append(see, { { 'tarnmf-manifest', 5 }, { 'tarnmf-layout', 5 } })

  local blocks = {}
  local function add(title, content)
    if #content == 0 then return end
    blocks[#blocks + 1] = pandoc.Header(1, pandoc.Str(title))
    append(blocks, as_manual(content))
  end
  local line = pandoc.RawInline('man', escaped(name .. ' - ' .. about))
  add('NAME', { pandoc.Para({ line }) })
  add('SYNOPSIS', page.synopsis)
  add('DESCRIPTION', page.description)
  add('COMMANDS', page.commands)
  add('OPTIONS', page.options)
  add('EXIT STATUS', page.exit)
  local pages = {}
  for _, other in ipairs(see) do
    if other[1] ~= name then
      if #pages > 0 then append(pages, { pandoc.Str(','), pandoc.Space() }) end
      append(pages, reference(other[1], other[2]))
    end
  end
  add('SEE ALSO', { pandoc.Para(pages) })
  return pandoc.Pandoc(blocks, doc.meta)
end
