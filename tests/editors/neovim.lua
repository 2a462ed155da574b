-- SPDX-License-Identifier: Apache-2.0
-- Drives neovim in the folder of an installation. What there is to see on the way to a corrected
-- manifest is written into ../session.

local function fail(message)
  io.stderr:write(message, '\n')
  vim.cmd('cquit 1')
end

local function expect(what, actual, expected)
  if not vim.deep_equal(actual, expected) then
    fail(what .. ': ' .. vim.inspect(actual) .. ' instead of ' .. vim.inspect(expected))
  end
end

local function wait_for(what, condition)
  if not vim.wait(30000, condition, 20) then
    fail('waited in vain for ' .. what .. '; found is ' .. vim.inspect(vim.diagnostic.get()))
  end
end

local function wait_for_diagnostics(number)
  wait_for(number .. ' diagnostics', function() return #vim.diagnostic.get(0) == number end)
end

-- Puts the cursor onto a text.
local function go_to(text)
  vim.fn.cursor(1, 1)
  expect('search for ' .. text, vim.fn.search('\\V' .. text, 'c') > 0, true)
end

-- Presses keys that the settings map, and gives the lines of the window that they open.
local function floating(keys)
  local window
  vim.cmd('normal ' .. keys)
  wait_for('window of ' .. keys, function()
    for _, each in ipairs(vim.api.nvim_list_wins()) do
      if vim.api.nvim_win_get_config(each).relative ~= '' then window = each end
    end
    return window ~= nil
  end)
  local lines = vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(window), 0, -1, true)
  vim.api.nvim_win_close(window, true)
  return lines
end

local function screen()
  vim.cmd('redraw')
  local lines = {}
  for row = 1, vim.api.nvim_buf_line_count(0) do
    local line = ''
    for column = 1, vim.o.columns do line = line .. vim.fn.screenstring(row, column) end
    table.insert(lines, (line:gsub(' +$', '')))
  end
  return lines
end

local session = io.open('../session', 'w')
local function record(keys, ...)
  session:write(keys, '\n')
  for _, lines in ipairs({ ... }) do session:write(table.concat(lines, '\n'), '\n') end
  session:write('\n')
end

local function diagnostics()
  vim.cmd('edit classes.tmfx')
  wait_for_diagnostics(1)
  local at = vim.diagnostic.get(0)[1]
  local column = vim.fn.getline(4):find('afinity', 1, true) - 1 -- in bytes
  expect('place', { at.lnum, at.col, at.end_lnum, at.end_col }, { 3, column, 3, column + 7 })
  expect('rule', at.user_data.lsp.code, 'attribute-unknown')
  record(':edit classes.tmfx', screen())

  local wrong = vim.fn.getline(4)
  vim.fn.setline(4, (wrong:gsub('afinity', 'affinity')))
  wait_for_diagnostics(0)
  vim.fn.setline(4, wrong)
  wait_for_diagnostics(1)
end

local function quick_fix()
  go_to('afinity')
  record('\\d', floating('\\d'))

  local offered
  vim.ui.select = function(items, options, choose)
    offered = { options.prompt }
    for i, item in ipairs(items) do
      table.insert(offered, i .. ': ' .. options.format_item(item))
    end
    choose(items[1], 1)
  end
  vim.cmd('normal \\a')
  wait_for('correction', function() return vim.fn.getline(4):find(' affinity=', 1, true) end)
  wait_for_diagnostics(0)
  record('\\a', offered, { '1' }, screen())
end

local function rename()
  go_to('clock"/>')
  vim.lsp.buf.rename('chrono')
  wait_for('renamed reference', function() return vim.fn.getline(5):find('"chrono"', 1, true) end)
  vim.cmd('silent wall')
  wait_for_diagnostics(0)
  go_to('chrono')
  vim.cmd('normal gd')
  wait_for('definition', function() return vim.fn.expand('%:t') == 'modules.tmfx' end)
  expect('definition', vim.fn.expand('<cword>'), 'chrono')
end

local function hover()
  go_to('name=')
  local text = table.concat(floating('K'), '\n')
  expect('hover of name: ' .. text, text:find('Name of the file', 1, true) ~= nil, true)
end

local function completion()
  vim.fn.append(2, '  <mod')
  vim.fn.cursor(3, 6)
  local position = vim.lsp.util.make_position_params()
  position.position.character = 6
  local answers = vim.lsp.buf_request_sync(0, 'textDocument/completion', position, 30000)
  local _, answer = next(answers)
  local words = {}
  for _, item in ipairs(
    vim.lsp.util.text_document_completion_list_to_complete_items(answer.result or {}, 'mod')
  ) do
    table.insert(words, item.abbr)
  end
  expect('completion', words, { 'modules' }) -- the one module that needs no list is there
end

vim.o.number = true
for _, case in ipairs({ diagnostics, quick_fix, rename, hover, completion }) do
  local ok, problem = xpcall(case, debug.traceback)
  if not ok then fail(problem) end
end
session:close()
local log = io.open(vim.lsp.get_log_path())
expect('fault of the server', log and log:read('*a'):match('%[ERROR%][^\n]*'), nil)
vim.cmd('qall!')
